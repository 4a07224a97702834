#include "headless/base/atomic_file.hpp"

#include "common/folder_entries.hpp"
#include "headless/base/file_reading.hpp"
#include "headless/base/folder.hpp"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <mutex>
#include <set>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace headless {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view temporary_prefix = ".felspar-";
constexpr std::string_view temporary_suffix = ".tmp";
constexpr std::size_t block_bytes = std::size_t{1} << 16;

bool is_temporary_name(std::string_view name) {
    if (!name.starts_with(temporary_prefix) || !name.ends_with(temporary_suffix))
        return false;
    name.remove_prefix(temporary_prefix.size());
    name.remove_suffix(std::min(name.size(), temporary_suffix.size()));
    return name.find_first_not_of("0123456789-") == std::string_view::npos;
}

/// False when another process holds the lock. File systems without locks count as unlocked.
bool lock(int descriptor) { return flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK; }

bool is_nameless(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && status.st_nlink == 0;
}

/// Removes the file unless its writer is alive. Only the holder of the lock removes it, so the name still
/// belongs to this file.
void remove_abandoned(const fs::path& temporary) {
    const Descriptor file(open(temporary.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (file >= 0 && flock(file, LOCK_EX | LOCK_NB) == 0 && !is_nameless(file))
        unlink(temporary.c_str());
}

/// Abandoned files are searched for once per folder and process: a folder with thousands of renders takes a
/// while to read.
bool is_first_visit(const fs::path& folder) {
    static std::mutex mutex;
    static std::set<std::string> visited;
    const std::lock_guard guard(mutex);
    return visited.insert(folder.native()).second;
}

void remove_abandoned_in(const fs::path& folder) {
    std::error_code unreadable; // then they stay
    for (const folder_entries::Entry& entry : folder_entries::read(folder, unreadable))
        if (is_temporary_name(entry.name))
            remove_abandoned(folder / entry.name);
}

bool move_into_place(const fs::path& temporary, const fs::path& target, ExistingFile existing) {
    if (existing == ExistingFile::replace)
        return rename(temporary.c_str(), target.c_str()) == 0;
    if (renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    // Some file systems do not support this rename. A second link is as safe there.
    const bool is_unsupported = errno == EINVAL || errno == ENOSYS;
    return is_unsupported && link(temporary.c_str(), target.c_str()) == 0 && unlink(temporary.c_str()) == 0;
}

} // namespace

Result<fs::path> resolve_links(const fs::path& file) {
    std::error_code error;
    if (!fs::is_symlink(file, error))
        return file;
    fs::path found = fs::canonical(file, error);
    if (!error)
        return found;
    const char* reason = error == std::errc::no_such_file_or_directory ? "is a link that leads nowhere"
                         : error == std::errc::too_many_symbolic_link_levels
                             ? "is a link that leads in a circle"
                             : nullptr;
    return tl::unexpected(reason ? path_failure(file, reason) : system_failure(file, error.value()));
}

Result<AtomicFile> AtomicFile::create(const fs::path& target) {
    static std::atomic<unsigned> serial{0};
    auto resolved = resolve_links(target);
    if (!resolved)
        return tl::unexpected(resolved.error());
    const fs::path folder = folder_of(*resolved);
    if (is_first_visit(folder))
        remove_abandoned_in(folder);
    const std::string prefix = std::string(temporary_prefix) + std::to_string(getpid()) + '-';
    for (;;) {
        fs::path temporary =
            resolved->parent_path() / (prefix + std::to_string(serial++)).append(temporary_suffix);
        const int descriptor = open(temporary.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor < 0 && errno != EEXIST)
            return tl::unexpected(system_failure(target, errno));
        if (descriptor < 0)
            continue;
        if (lock(descriptor) && !is_nameless(descriptor))
            return AtomicFile(std::move(*resolved), std::move(temporary), descriptor);
        close(descriptor); // another process took it for abandoned and is removing it
    }
}

AtomicFile::~AtomicFile() {
    if (!temporary_.empty())
        unlink(temporary_.c_str());
    if (descriptor_ >= 0)
        close(descriptor_);
}

Result<void> AtomicFile::write(std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor_, text.data(), text.size());
        if (written < 0 && errno != EINTR)
            return tl::unexpected(system_failure(target_, errno));
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return {};
}

Result<void> AtomicFile::publish_as(const fs::path& target, ExistingFile existing) {
    const auto resolved = resolve_links(target);
    if (!resolved)
        return tl::unexpected(resolved.error());
    // The duplicate keeps the lock: until the file has its name it must not look abandoned.
    const Descriptor lock_holder(fcntl(descriptor_, F_DUPFD_CLOEXEC, 0));
    if (lock_holder < 0 || fsync(descriptor_) != 0 || close(std::exchange(descriptor_, -1)) != 0 ||
        !move_into_place(temporary_, *resolved, existing))
        return tl::unexpected(system_failure(target, errno));
    temporary_.clear();
    return {};
}

Result<bool> AtomicFile::has_bytes_of(const fs::path& file) const {
    const Descriptor other(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (other < 0)
        return tl::unexpected(system_failure(file, errno));
    for (off_t position = 0;; position += static_cast<off_t>(block_bytes)) {
        const auto own_bytes = read_at(descriptor_, temporary_, position, block_bytes);
        const auto other_bytes = read_at(other, file, position, block_bytes);
        if (!own_bytes || !other_bytes)
            return tl::unexpected((own_bytes ? other_bytes : own_bytes).error());
        if (*own_bytes != *other_bytes)
            return false;
        if (own_bytes->size() < block_bytes)
            return true;
    }
}

Result<void> copy_atomically(const fs::path& file, const fs::path& copy) {
    const Descriptor source(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (source < 0)
        return tl::unexpected(system_failure(file, errno));
    auto written = AtomicFile::create(copy);
    if (!written)
        return tl::unexpected(written.error());
    for (off_t position = 0;;) {
        const auto bytes = read_at(source, file, position, block_bytes);
        if (!bytes)
            return tl::unexpected(bytes.error());
        if (bytes->empty())
            break;
        if (auto result = written->write(*bytes); !result)
            return result;
        position += static_cast<off_t>(bytes->size());
    }
    return written->publish(ExistingFile::keep);
}

Result<void> write_file(const fs::path& file, std::string_view text) {
    auto written = AtomicFile::create(file);
    if (!written)
        return tl::unexpected(written.error());
    return written->write(text).and_then([&] { return written->publish(ExistingFile::replace); });
}

} // namespace headless
