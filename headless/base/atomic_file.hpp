#pragma once
// A file written beside its final place and moved there when it is whole, so that nobody ever sees half of
// it.

#include "headless/base/failure.hpp"

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

namespace headless {

/// What becomes of a file that already has the target's name.
enum class ExistingFile { keep, replace };

/// Where a file of that name is written: at the end of its links, so that they stay. A path that is no link
/// comes back as it is. Fails, naming the path, for a link that leads nowhere or in a circle.
Result<std::filesystem::path> behind_links(const std::filesystem::path& file);

/// Owns the temporary file and its descriptor until it is published; removes it when it never is. A process
/// that is killed leaves the file behind; the next one that writes in the folder removes it. The file is
/// locked as long as its writer lives, which tells the two apart.
class AtomicFile {
public:
    /// Makes an empty file in the folder of `target`, behind its links, with the permissions of an ordinary
    /// new file.
    static Result<AtomicFile> create(const std::filesystem::path& target);

    AtomicFile(AtomicFile&& other) noexcept
        : target_(std::move(other.target_)), staged_(std::exchange(other.staged_, {})),
          descriptor_(std::exchange(other.descriptor_, -1)) {}
    AtomicFile& operator=(AtomicFile&&) = delete;
    ~AtomicFile();

    /// Open for reading and writing; stays owned.
    int descriptor() const { return descriptor_; }

    Result<void> write(std::string_view text);

    /// Gives the file its name, in one step, when what was written would survive a power cut.
    /// `ExistingFile::keep` fails when the name is taken.
    Result<void> publish(ExistingFile existing) { return publish_as(target_, existing); }

    /// Gives it another name than it was made for, on the same file system.
    Result<void> publish_as(const std::filesystem::path& target, ExistingFile existing);

    /// Whether that file holds the same bytes. Fails when one of the two cannot be read.
    Result<bool> has_bytes_of(const std::filesystem::path& file) const;

private:
    AtomicFile(std::filesystem::path target, std::filesystem::path staged, int descriptor)
        : target_(std::move(target)), staged_(std::move(staged)), descriptor_(descriptor) {}

    std::filesystem::path target_;
    std::filesystem::path staged_;
    int descriptor_;
};

/// Copies a file to a name that nothing has.
Result<void> copy_whole(const std::filesystem::path& file, const std::filesystem::path& copy);

/// Writes a whole file, in the place of one that has its name.
Result<void> write_file(const std::filesystem::path& file, std::string_view text);

} // namespace headless
