#include "headless/system/posix/differences.hpp"

#include "headless/system/files.hpp"
#include "headless/system/library.hpp"
#include "headless/system/process.hpp"
#include "headless/system/program.hpp"

#include <cerrno>
#include <crt_externs.h>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <mach-o/dyld.h>
#include <string>
#include <system_error>
#include <unistd.h>

namespace headless::system {
namespace posix {

int rename_exclusively(const char* file, const char* new_name) {
    const int result = renamex_np(file, new_name, RENAME_EXCL);
    if (result != 0 && errno == ENOTSUP)
        errno = ENOSYS;
    return result;
}

// fsync() leaves the bytes in the disk's own memory. Network volumes know no other.
int sync_to_disk(int descriptor) { return fcntl(descriptor, F_FULLFSYNC) == 0 ? 0 : fsync(descriptor); }

int make_pipe(std::array<int, 2>& ends) {
    if (pipe(ends.data()) != 0)
        return -1;
    for (const int end : ends)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    return 0;
}

timespec time_of_change(const struct stat& status) { return status.st_mtimespec; }

char** environment() { return *_NSGetEnviron(); }

} // namespace posix

/// There are no files without a name. This one loses its own at once, and the name is one that is removed as
/// abandoned if the process ends before.
int reserve_space(const std::filesystem::path& folder, std::uintmax_t bytes) {
    const std::filesystem::path name = folder / (".felspar-" + std::to_string(process_number()) + "-.tmp");
    Descriptor reserve(create_new(name));
    if (reserve < 0 || !remove_file(name))
        return -1;
    fstore_t space{F_ALLOCATEALL, F_PEOFPOSMODE, 0, static_cast<off_t>(bytes), 0};
    return fcntl(reserve, F_PREALLOCATE, &space) == 0 ? reserve.release() : -1;
}

std::string_view library_suffix() { return ".dylib"; }

std::filesystem::path program_file() {
    std::uint32_t size = 0;
    _NSGetExecutablePath(nullptr, &size);
    std::string path(size, '\0');
    if (_NSGetExecutablePath(path.data(), &size) != 0)
        return {};
    std::error_code error;
    return std::filesystem::canonical(path.c_str(), error);
}

} // namespace headless::system
