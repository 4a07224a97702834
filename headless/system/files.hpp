#pragma once
// Files as the operating system has them. What fails returns a negative number, false or nothing, and leaves
// the reason in errno.

#include <compare>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <utility>

namespace headless::system {

/// Opens for reading. Does not wait for the other end if the file is a pipe.
int open_to_read(const std::filesystem::path& file);

/// As open_to_read, but fails for a link.
int open_unlinked_to_read(const std::filesystem::path& file);

/// Creates a file for reading and writing, with the permissions of an ordinary new file. Fails with EEXIST if
/// the name is taken.
int create_new(const std::filesystem::path& file);

/// Another descriptor of the same open file, which also keeps its lock.
int duplicate(int descriptor);

/// 0, or -1 if what was written before may be lost.
int close(int descriptor);

/// @returns the number of bytes read, 0 at the end of the file
std::int64_t read_at(int descriptor, void* bytes, std::size_t count, std::int64_t position);

/// @returns the number of bytes written
std::int64_t write_at(int descriptor, const void* bytes, std::size_t count, std::int64_t position);

/// Writes where the last write ended. @returns the number of bytes written
std::int64_t write(int descriptor, const void* bytes, std::size_t count);

/// On success what was written survives a power cut.
bool sync(int descriptor);

/// On success files created, renamed and removed in the folder survive a power cut.
bool sync_folder(const std::filesystem::path& folder);

/// Locks an open file until its last descriptor is closed. Fails with EWOULDBLOCK if another process has
/// locked it, with other reasons if the file system has no locks.
bool try_lock(int descriptor);

/// Replaces a file that has the new name. Both lie on the same file system.
bool rename_replacing(const std::filesystem::path& file, const std::filesystem::path& new_name);

/// Fails with EEXIST if the new name is taken.
bool rename_keeping(const std::filesystem::path& file, const std::filesystem::path& new_name);

bool remove_file(const std::filesystem::path& file);

/// Whether the name stands for another path. A second name of the same file does not.
bool is_link(const std::filesystem::path& file);

/// The path that a link leads to, without further links; empty on failure.
std::filesystem::path target_of(const std::filesystem::path& link);

/// Reserves disk space in the folder until the descriptor is closed or the process ends, however it ends.
/// @returns a negative number if there is not enough or the file system cannot reserve
int reserve_space(const std::filesystem::path& folder, std::uintmax_t bytes);

enum class FileType { regular, folder, other };

/// The same for all links to a file and all spellings of its path.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t number = 0;

    auto operator<=>(const FileIdentity&) const = default;
};

struct FileStatus {
    FileType type = FileType::other;
    FileIdentity identity;
    std::uint64_t names = 0; ///< 0: removed while it was open
    std::int64_t bytes = 0;
    std::int64_t changed_seconds = 0; ///< since an epoch of the system's; only to be compared
    std::int64_t changed_nanoseconds = 0;
};

/// Of the file that a link leads to.
std::optional<FileStatus> status_of(const std::filesystem::path& file);
std::optional<FileStatus> status_of(int descriptor);

/// Owns a file descriptor; a negative number is none.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
    Descriptor& operator=(Descriptor&&) = delete;
    ~Descriptor() { close(); }

    operator int() const { return number_; }
    int release() { return std::exchange(number_, -1); }

    /// As system::close; 0 if there is none.
    int close() { return number_ < 0 ? 0 : system::close(release()); }

private:
    int number_;
};

} // namespace headless::system
