#pragma once
// Which files a run may write: nothing that the user made, nothing that the run still reads, nothing twice.

#include "headless/base/failure.hpp"
#include "headless/jobs/file_identity.hpp"
#include "headless/workstation/workstation.hpp"

#include <filesystem>
#include <optional>
#include <span>

namespace headless::jobs {

class OutputGuard {
public:
    explicit OutputGuard(std::span<const std::filesystem::path> inputs) : inputs_(inputs) {}

    /// The run reads these, too.
    void protect(std::span<const std::filesystem::path> inputs) { inputs_.add(inputs); }

    /// The project that the run will replace plays these: until then they stay as they are.
    void spare(std::span<const std::filesystem::path> played) { spared_.add(played); }

    /// A wav file may be written where there is none, or in place of one that an earlier run has rendered.
    Result<void> permits_audio(const std::filesystem::path& target) const;

    /// What a render may do about an existing file. One that is spared will do if it is the same. Fails when
    /// the file cannot be read.
    Result<workstation::ExistingRender> judge_render(const std::filesystem::path& target) const;

    /// Whether a render that was given up may be removed: not when it is a spared file that was the same.
    bool may_remove(const std::filesystem::path& render) const {
        return !inputs_.contains(render) && !spared_.contains(render) && !written_.contains(render);
    }

    /// A project file may be written in an existing folder where there is none, or in place of one of ours.
    Result<void> permits_project(const std::filesystem::path& target) const;

    /// A table of pairs, or a list of files, may be written by the same rule.
    Result<void> permits_table(const std::filesystem::path& target) const;
    Result<void> permits_list(const std::filesystem::path& target) const;

    /// `file` is one of this run's results from now on.
    void wrote(const std::filesystem::path& file) { written_.add({&file, 1}); }

private:
    using IsOwn = Result<bool>(const std::filesystem::path&);

    /// Why audio may not be written there; none when it may.
    Result<std::optional<Failure>> objection_to_audio(const std::filesystem::path& target) const;
    Result<void> permits_in_folder(const std::filesystem::path& target, IsOwn* is_own,
                                   const char* kind) const;

    FileIdentities inputs_;
    FileIdentities spared_;
    FileIdentities written_;
};

} // namespace headless::jobs
