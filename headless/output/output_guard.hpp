#pragma once
// Which files a run may write: nothing that the user made, nothing that the run still reads, nothing twice.

#include "headless/base/failure.hpp"

#include <filesystem>
#include <set>
#include <span>
#include <utility>

namespace headless {

/// Files are known by device and inode, so that links and other spellings of a path deceive nobody.
class OutputGuard {
public:
    explicit OutputGuard(std::span<const std::filesystem::path> inputs);

    /// The run reads these, too.
    void protect(std::span<const std::filesystem::path> inputs);

    /// A wav file may be written where there is none, or in place of one that an earlier run has rendered.
    Result<void> permits_audio(const std::filesystem::path& target) const;

    /// A project file may be written in an existing folder where there is none, or in place of one of ours.
    Result<void> permits_project(const std::filesystem::path& target) const;

    /// A table of pairs, or a list of files, may be written by the same rule.
    Result<void> permits_table(const std::filesystem::path& target) const;
    Result<void> permits_list(const std::filesystem::path& target) const;

    /// `file` is one of this run's results from now on.
    void wrote(const std::filesystem::path& file);

private:
    using Identity = std::pair<unsigned long long, unsigned long long>;
    using Identities = std::set<Identity>;

    using IsOwn = bool(const std::filesystem::path&);
    Result<void> permits_in_folder(const std::filesystem::path& target, IsOwn* is_own,
                                   const char* kind) const;

    static Identities identities_of(std::span<const std::filesystem::path> files);

    Identities inputs_;
    Identities written_;
};

} // namespace headless
