#include "headless/base/atomic_file.hpp"

#include "common/folder_entries.hpp"
#include "common/path_text.hpp"
#include "headless/base/file_reading.hpp"
#include "headless/base/folder.hpp"
#include "headless/system/files.hpp"
#include "headless/system/process.hpp"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <iterator>
#include <mutex>
#include <set>

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
bool lock(int descriptor) { return system::try_lock(descriptor) || errno != EWOULDBLOCK; }

bool is_nameless(int descriptor) {
    const auto status = system::status_of(descriptor);
    return status && status->names == 0;
}

/// Removes the file unless its writer is alive. Only the holder of the lock removes it, so the name still
/// belongs to this file.
void remove_abandoned(const fs::path& temporary) {
    const system::Descriptor file(system::open_unlinked_to_read(temporary));
    if (file >= 0 && system::try_lock(file) && !is_nameless(file))
        system::remove_file(temporary);
}

/// Abandoned files are searched for once per folder and process: a folder with thousands of renders takes a
/// while to read.
bool is_first_visit(const fs::path& folder) {
    static std::mutex mutex;
    static std::set<fs::path::string_type> visited;
    const std::lock_guard guard(mutex);
    return visited.insert(folder.native()).second;
}

bool move_into_place(const fs::path& temporary, const fs::path& target, ExistingFile existing) {
    return existing == ExistingFile::replace ? system::rename_replacing(temporary, target)
                                             : system::rename_keeping(temporary, target);
}

} // namespace

void remove_abandoned_in(const fs::path& folder) {
    std::error_code unreadable; // then they stay
    for (const folder_entries::Entry& entry : folder_entries::read(folder, unreadable))
        if (is_temporary_name(entry.name))
            remove_abandoned(folder / path_text::path_of(entry.name));
}

Result<fs::path> resolve_links(const fs::path& file) {
    if (!system::is_link(file))
        return file;
    fs::path found = system::target_of(file);
    if (!found.empty())
        return found;
    const int error = errno;
    if (error == ENOENT)
        return tl::unexpected(path_failure(file, "is a link that leads nowhere"));
    if (error == ELOOP)
        return tl::unexpected(path_failure(file, "is a link that leads in a circle"));
    return tl::unexpected(system_failure(file, error));
}

Result<AtomicFile> AtomicFile::create(const fs::path& target) {
    static std::atomic<unsigned> serial{0};
    auto resolved = resolve_links(target);
    if (!resolved)
        return tl::unexpected(resolved.error());
    const fs::path folder = folder_of(*resolved);
    if (is_first_visit(folder))
        remove_abandoned_in(folder);
    const std::string prefix = std::string(temporary_prefix) + std::to_string(system::process_number()) + '-';
    for (;;) {
        fs::path temporary =
            resolved->parent_path() / (prefix + std::to_string(serial++)).append(temporary_suffix);
        const int descriptor = system::create_new(temporary);
        if (descriptor < 0 && errno != EEXIST)
            return tl::unexpected(system_failure(target, errno));
        if (descriptor < 0)
            continue;
        if (lock(descriptor) && !is_nameless(descriptor))
            return AtomicFile(std::move(*resolved), std::move(temporary), descriptor);
        system::close(descriptor); // another process took it for abandoned and is removing it
    }
}

AtomicFile::~AtomicFile() {
    if (!temporary_.empty())
        system::remove_file(temporary_);
    if (descriptor_ >= 0)
        system::close(descriptor_);
}

Result<void> AtomicFile::write(std::string_view text) {
    while (!text.empty()) {
        const std::int64_t written = system::write(descriptor_, text.data(), text.size());
        if (written < 0 && errno != EINTR)
            return tl::unexpected(system_failure(target_, errno));
        text.remove_prefix(static_cast<std::size_t>(std::max<std::int64_t>(written, 0)));
    }
    return {};
}

Result<void> AtomicFile::publish_as(const fs::path& target, ExistingFile existing) {
    const auto resolved = resolve_links(target);
    if (!resolved)
        return tl::unexpected(resolved.error());
    // The duplicate keeps the lock: until the file has its name it must not look abandoned.
    const system::Descriptor lock_holder(system::duplicate(descriptor_));
    if (lock_holder < 0 || !system::sync(descriptor_) || system::close(std::exchange(descriptor_, -1)) != 0 ||
        !move_into_place(temporary_, *resolved, existing))
        return tl::unexpected(system_failure(target, errno));
    temporary_.clear();
    return {};
}

Result<bool> AtomicFile::has_bytes_of(const fs::path& file) const {
    const system::Descriptor other(system::open_to_read(file));
    if (other < 0)
        return tl::unexpected(system_failure(file, errno));
    for (std::int64_t position = 0;; position += std::int64_t{block_bytes}) {
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
    const system::Descriptor source(system::open_to_read(file));
    if (source < 0)
        return tl::unexpected(system_failure(file, errno));
    auto written = AtomicFile::create(copy);
    if (!written)
        return tl::unexpected(written.error());
    for (std::int64_t position = 0;;) {
        const auto bytes = read_at(source, file, position, block_bytes);
        if (!bytes)
            return tl::unexpected(bytes.error());
        if (bytes->empty())
            break;
        if (auto result = written->write(*bytes); !result)
            return result;
        position += std::ssize(*bytes);
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
