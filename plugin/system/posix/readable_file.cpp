#include "system/readable_file.hpp"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

ReadableFile::ReadableFile(const std::filesystem::path& file)
    : handle_(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {}

ReadableFile::~ReadableFile() {
    if (is_open())
        close(static_cast<int>(handle_));
}

std::ptrdiff_t ReadableFile::read(char* bytes, std::size_t count) const {
    std::ptrdiff_t got = 0;
    do
        got = ::read(static_cast<int>(handle_), bytes, count);
    while (got < 0 && errno == EINTR);
    return got < 0 && errno == EISDIR ? 0 : got;
}
