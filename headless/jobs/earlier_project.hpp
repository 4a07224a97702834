#pragma once
// The project that a run is going to replace. What it plays stays until the new one stands, so that whatever
// stops the run, one of the two is whole with its audio. Renders that differ get other names meanwhile.

#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"

#include <filesystem>
#include <utility>
#include <vector>

namespace headless::jobs {

/// All that the project's takes play, heard or not.
std::vector<std::filesystem::path> audio_of(const project::Project& project);

class EarlierProject {
public:
    /// Nothing was there.
    EarlierProject() = default;

    /// Looks at a project of ours that lies at `file`; any other file, or none, is as nothing. Fails, naming
    /// the file, when it cannot be read: what it plays could not be spared.
    static Result<EarlierProject> read(const std::filesystem::path& file);

    const std::vector<std::filesystem::path>& audio() const { return audio_; }

    /// Removes renders that `present`, which has been saved in this one's place, has replaced: it plays
    /// another render of their recording, and no project beside it names them.
    /// @returns what could not be removed
    std::vector<Failure> remove_replaced_renders(const project::Project& present) const;

private:
    struct Render {
        std::filesystem::path recording;
        std::filesystem::path file;
    };

    std::vector<std::filesystem::path> audio_;
    std::vector<Render> renders_; // in the project's own folder of renders
};

} // namespace headless::jobs
