#include "headless/system/posix/differences.hpp"

#include "headless/system/files.hpp"
#include "headless/system/library.hpp"
#include "headless/system/program.hpp"

#include <cstdio>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace headless::system {
namespace posix {

int rename_exclusively(const char* file, const char* new_name) {
    return renameat2(AT_FDCWD, file, AT_FDCWD, new_name, RENAME_NOREPLACE);
}

int sync_to_disk(int descriptor) { return fsync(descriptor); }

int make_pipe(std::array<int, 2>& ends) { return pipe2(ends.data(), O_CLOEXEC); }

timespec time_of_change(const struct stat& status) { return status.st_mtim; }

char** environment() { return environ; }

} // namespace posix

int reserve_space(const std::filesystem::path& folder, std::uintmax_t bytes) {
    Descriptor nameless(open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600));
    const bool is_reserved = nameless >= 0 && fallocate(nameless, 0, 0, static_cast<off_t>(bytes)) == 0;
    return is_reserved ? nameless.release() : -1;
}

std::string_view library_suffix() { return ".so"; }

std::filesystem::path program_file() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

} // namespace headless::system
