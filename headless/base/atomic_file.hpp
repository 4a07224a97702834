#pragma once
// Files that appear under their name when they are complete, or not at all. A temporary file is written in
// the same folder and then renamed.

#include "headless/base/failure.hpp"

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

namespace headless {

/// What happens to a file that already has the target's name.
enum class ExistingFile { keep, replace };

/// Returns the path that `file` leads to, so that a file written there keeps the links. A path that is not a
/// link is returned unchanged. Fails, naming the path, if a link is broken or circular.
Result<std::filesystem::path> resolve_links(const std::filesystem::path& file);

/// Owns the temporary file and its descriptor until it is published, and removes it if it never is. A killed
/// process leaves the file behind, and the next process that writes in the folder removes it. A file whose
/// writer is alive is locked, so it is not removed.
class AtomicFile {
public:
    /// Creates an empty file in the folder that `target` leads to, with the permissions of an ordinary new
    /// file.
    static Result<AtomicFile> create(const std::filesystem::path& target);

    AtomicFile(AtomicFile&& other) noexcept
        : target_(std::move(other.target_)), temporary_(std::exchange(other.temporary_, {})),
          descriptor_(std::exchange(other.descriptor_, -1)) {}
    AtomicFile& operator=(AtomicFile&&) = delete;
    ~AtomicFile();

    /// Open for reading and writing. Owned by this object.
    int descriptor() const { return descriptor_; }

    Result<void> write(std::string_view text);

    /// Syncs the file, then gives it the target's name in one step. `ExistingFile::keep` fails if the name is
    /// taken.
    Result<void> publish(ExistingFile existing) { return publish_as(target_, existing); }

    /// As `publish`, under another name on the same file system.
    Result<void> publish_as(const std::filesystem::path& target, ExistingFile existing);

    /// Whether `file` holds the same bytes. Fails if either cannot be read.
    Result<bool> has_bytes_of(const std::filesystem::path& file) const;

private:
    AtomicFile(std::filesystem::path target, std::filesystem::path temporary, int descriptor)
        : target_(std::move(target)), temporary_(std::move(temporary)), descriptor_(descriptor) {}

    std::filesystem::path target_;
    std::filesystem::path temporary_;
    int descriptor_;
};

/// Removes what killed processes left in the folder. Whoever creates a file there need not call it.
void remove_abandoned_in(const std::filesystem::path& folder);

/// Copies a file to a new name. Fails if the name is taken.
Result<void> copy_atomically(const std::filesystem::path& file, const std::filesystem::path& copy);

/// Writes a file, replacing one that has its name.
Result<void> write_file(const std::filesystem::path& file, std::string_view text);

} // namespace headless
