#pragma once
// Decides which files a run may write: nothing that the user made, nothing that the run still reads, nothing
// twice.

#include "headless/base/failure.hpp"
#include "headless/jobs/file_identity.hpp"
#include "headless/workstation/workstation.hpp"

#include <filesystem>
#include <functional>
#include <span>
#include <string>

namespace headless::jobs {

/// Every `permits_` function fails with the kind `refused` if the file must stay as it is, and with another
/// kind if the file in the way cannot be examined.
class OutputGuard {
public:
    explicit OutputGuard(std::span<const std::filesystem::path> inputs) : inputs_(inputs) {}

    /// Adds files that the run reads.
    void protect(std::span<const std::filesystem::path> inputs) { inputs_.add(inputs); }

    /// Adds files that the project to be replaced plays: they stay as they are until it is replaced.
    void spare(std::span<const std::filesystem::path> played) { spared_.add(played); }

    /// A wav file may be written under a new name, or may replace one that an earlier run has rendered.
    Result<void> permits_audio(const std::filesystem::path& target) const;

    /// What a render may do about an existing file. A spared file is used if the render is the same.
    /// @returns a failure if the file cannot be examined
    Result<workstation::ExistingRender> judge_render(const std::filesystem::path& target) const;

    /// Whether the render of an abandoned work may be removed. False for a spared file, which the render
    /// turned out to equal.
    bool may_remove(const std::filesystem::path& render) const {
        return !inputs_.contains(render) && !spared_.contains(render) && !written_.contains(render);
    }

    /// A project file may be written in an existing folder, under a new name or in place of one of ours.
    /// @param continued  the project that is read; one that was made from it is ours too. May be empty
    Result<void> permits_project(const std::filesystem::path& target,
                                 const std::filesystem::path& continued = {}) const;

    /// The same rule for a table of pairs, and for a list of files.
    Result<void> permits_table(const std::filesystem::path& target) const;
    Result<void> permits_list(const std::filesystem::path& target) const;

    /// Adds a file that this run has written, which it will not replace.
    void wrote(const std::filesystem::path& file) { written_.add({&file, 1}); }

private:
    using IsOwn = std::function<Result<bool>(const std::filesystem::path&)>;

    /// Refuses an input, and a link whose target does not exist.
    Result<void> spares_inputs(const std::filesystem::path& target) const;
    Result<void> permits_in_folder(const std::filesystem::path& target, const IsOwn& is_own,
                                   const std::string& kind) const;

    FileIdentities inputs_;
    FileIdentities spared_;
    FileIdentities written_;
};

} // namespace headless::jobs
