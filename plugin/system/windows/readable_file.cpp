#include "system/readable_file.hpp"

#include <algorithm>
#include <limits>
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace {

HANDLE handle_of(std::intptr_t value) { return reinterpret_cast<HANDLE>(value); }

bool is_folder(HANDLE file) {
    BY_HANDLE_FILE_INFORMATION information{};
    return GetFileInformationByHandle(file, &information) &&
           (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace

// Pipes, consoles and other devices are not opened, because reading them can wait. Folders open only with the
// backup flag. Others may go on reading, writing and deleting.
ReadableFile::ReadableFile(const std::filesystem::path& file)
    : handle_(reinterpret_cast<std::intptr_t>(
          CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr))) {
    if (!is_open() || GetFileType(handle_of(handle_)) == FILE_TYPE_DISK)
        return;
    CloseHandle(handle_of(handle_));
    handle_ = closed;
}

ReadableFile::~ReadableFile() {
    if (is_open())
        CloseHandle(handle_of(handle_));
}

std::ptrdiff_t ReadableFile::read(char* bytes, std::size_t count) const {
    const auto wanted = static_cast<DWORD>(std::min<std::size_t>(count, std::numeric_limits<DWORD>::max()));
    DWORD got = 0;
    if (ReadFile(handle_of(handle_), bytes, wanted, &got, nullptr))
        return static_cast<std::ptrdiff_t>(got);
    return is_folder(handle_of(handle_)) ? 0 : -1;
}
