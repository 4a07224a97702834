#pragma once
// A file written beside its final place and moved there when it is whole, so that nobody ever sees half of
// it.

#include "headless/base/failure.hpp"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace headless {

/// What becomes of a file that already has the target's name.
enum class ExistingFile { keep, replace };

/// The failure of a system call on `path`, from errno.
inline Failure system_failure(const std::filesystem::path& path, int error_number) {
    return {path.string() + ": " + std::generic_category().message(error_number)};
}

/// Owns the temporary file and its descriptor until it is published; removes it when it never is.
class StagedFile {
public:
    /// Makes an empty file in the folder of `target`, with the permissions of an ordinary new file.
    static Result<StagedFile> create(std::filesystem::path target) {
        static std::atomic<unsigned> serial{0};
        const std::string prefix = ".felspar-" + std::to_string(getpid()) + '-';
        for (;;) {
            const auto staged = target.parent_path() / (prefix + std::to_string(serial++) + ".tmp");
            const int descriptor = open(staged.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
            if (descriptor >= 0) {
                return StagedFile(std::move(target), staged, descriptor);
            }
            if (errno != EEXIST) {
                return tl::unexpected(system_failure(target, errno));
            }
        }
    }

    StagedFile(StagedFile&& other) noexcept
        : target_(std::move(other.target_)), staged_(std::exchange(other.staged_, {})),
          descriptor_(std::exchange(other.descriptor_, -1)) {}
    StagedFile& operator=(StagedFile&&) = delete;

    ~StagedFile() {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
        if (!staged_.empty()) {
            unlink(staged_.c_str());
        }
    }

    /// Open for writing; stays owned.
    int descriptor() const { return descriptor_; }

    Result<void> write(std::string_view text) {
        while (!text.empty()) {
            const ssize_t written = ::write(descriptor_, text.data(), text.size());
            if (written < 0 && errno != EINTR) {
                return tl::unexpected(system_failure(target_, errno));
            }
            text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
        }
        return {};
    }

    /// Returns when what was written would survive a power cut.
    Result<void> flush_to_disk() {
        if (fsync(descriptor_) != 0) {
            return tl::unexpected(system_failure(target_, errno));
        }
        return {};
    }

    /// Gives the file its name, in one step. `ExistingFile::keep` fails when the name is taken.
    Result<void> publish(ExistingFile existing) {
        if (close(std::exchange(descriptor_, -1)) != 0 || !move_into_place(existing)) {
            return tl::unexpected(system_failure(target_, errno));
        }
        staged_.clear();
        return {};
    }

private:
    StagedFile(std::filesystem::path target, std::filesystem::path staged, int descriptor)
        : target_(std::move(target)), staged_(std::move(staged)), descriptor_(descriptor) {}

    bool move_into_place(ExistingFile existing) const {
        if (existing == ExistingFile::replace) {
            return rename(staged_.c_str(), target_.c_str()) == 0;
        }
        if (renameat2(AT_FDCWD, staged_.c_str(), AT_FDCWD, target_.c_str(), RENAME_NOREPLACE) == 0) {
            return true;
        }
        // Some file systems know no such rename; a second name is as safe there.
        const bool unknown = errno == EINVAL || errno == ENOSYS;
        return unknown && link(staged_.c_str(), target_.c_str()) == 0 && unlink(staged_.c_str()) == 0;
    }

    std::filesystem::path target_;
    std::filesystem::path staged_;
    int descriptor_;
};

/// Writes a whole file, in the place of one that has its name.
inline Result<void> write_file(const std::filesystem::path& file, std::string_view text) {
    auto staged = StagedFile::create(file);
    if (!staged) {
        return tl::unexpected(staged.error());
    }
    return staged->write(text).and_then([&] { return staged->flush_to_disk(); }).and_then([&] {
        return staged->publish(ExistingFile::replace);
    });
}

} // namespace headless
