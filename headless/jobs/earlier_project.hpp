#pragma once
// The project that a run is going to replace. Its audio stays until the new project is saved, so whatever
// stops the run, one of the two projects is complete. New renders that differ get other names.

#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"

#include <filesystem>
#include <utility>
#include <vector>

namespace headless::jobs {

/// The files of all takes of the project, active or not.
std::vector<std::filesystem::path> audio_of(const project::Project& project);

class EarlierProject {
public:
    /// There is no earlier project.
    EarlierProject() = default;

    /// Reads the project that `file` holds, if it exists.
    /// @returns a failure that names the file if it cannot be read, since its audio could not be protected
    static Result<EarlierProject> read(const std::filesystem::path& file);

    const std::vector<std::filesystem::path>& audio() const { return audio_; }

    /// Removes the renders that `present`, which has replaced this project, does not need: it plays another
    /// render of the same recording, and no other project file in the folder names them.
    /// @returns a failure for each file that could not be removed
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
