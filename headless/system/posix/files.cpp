#include "headless/system/files.hpp"

#include "headless/system/posix/differences.hpp"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace headless::system {
namespace {

FileType type_of(mode_t mode) {
    return S_ISREG(mode) ? FileType::regular : S_ISDIR(mode) ? FileType::folder : FileType::other;
}

FileStatus status_from(const struct stat& status) {
    const timespec changed = posix::time_of_change(status);
    return {type_of(status.st_mode), {static_cast<std::uint64_t>(status.st_dev), status.st_ino},
            status.st_nlink,         status.st_size,
            changed.tv_sec,          changed.tv_nsec};
}

} // namespace

int open_to_read(const std::filesystem::path& file) {
    return open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
}

int open_unlinked_to_read(const std::filesystem::path& file) {
    return open(file.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
}

int create_new(const std::filesystem::path& file) {
    return open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

int duplicate(int descriptor) { return fcntl(descriptor, F_DUPFD_CLOEXEC, 0); }

int close(int descriptor) { return ::close(descriptor); }

std::int64_t read_at(int descriptor, void* bytes, std::size_t count, std::int64_t position) {
    return pread(descriptor, bytes, count, position);
}

std::int64_t write_at(int descriptor, const void* bytes, std::size_t count, std::int64_t position) {
    return pwrite(descriptor, bytes, count, position);
}

std::int64_t write(int descriptor, const void* bytes, std::size_t count) {
    return ::write(descriptor, bytes, count);
}

bool sync(int descriptor) { return posix::sync_to_disk(descriptor) == 0; }

bool sync_folder(const std::filesystem::path& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool is_synced = descriptor >= 0 && (fsync(descriptor) == 0 || errno == EINVAL);
    const int error_number = errno;
    if (descriptor >= 0)
        close(descriptor);
    errno = error_number;
    return is_synced;
}

bool try_lock(int descriptor) { return flock(descriptor, LOCK_EX | LOCK_NB) == 0; }

bool rename_replacing(const std::filesystem::path& file, const std::filesystem::path& new_name) {
    return std::rename(file.c_str(), new_name.c_str()) == 0;
}

bool rename_keeping(const std::filesystem::path& file, const std::filesystem::path& new_name) {
    if (posix::rename_exclusively(file.c_str(), new_name.c_str()) == 0)
        return true;
    // Some file systems do not support this rename. A second link is as safe there.
    const bool is_unsupported = errno == EINVAL || errno == ENOSYS;
    return is_unsupported && link(file.c_str(), new_name.c_str()) == 0 && remove_file(file);
}

bool remove_file(const std::filesystem::path& file) { return unlink(file.c_str()) == 0; }

bool is_link(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::is_symlink(file, error);
}

std::filesystem::path target_of(const std::filesystem::path& link) {
    std::error_code error;
    std::filesystem::path found = std::filesystem::canonical(link, error);
    if (error)
        errno = error.value();
    return found;
}

std::optional<FileStatus> status_of(const std::filesystem::path& file) {
    struct stat status {};
    return stat(file.c_str(), &status) == 0 ? std::optional(status_from(status)) : std::nullopt;
}

std::optional<FileStatus> status_of(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 ? std::optional(status_from(status)) : std::nullopt;
}

} // namespace headless::system
