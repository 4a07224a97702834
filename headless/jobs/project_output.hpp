#pragma once
// Saves the project file at the end of a run.

#include "headless/base/failure.hpp"
#include "headless/jobs/output_guard.hpp"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace headless::project {
class Project;
} // namespace headless::project

namespace headless::workstation {
class Workstation;
} // namespace headless::workstation

namespace headless::jobs {

class EarlierProject;

/// The absolute path, with links resolved, of a file that exists or will be created.
std::filesystem::path true_path(const std::filesystem::path& file);

/// Checks that a file can be created at `target`. Leaves no file behind.
Result<void> check_writable(const std::filesystem::path& target);

/// Checks that a project may be written to `target`, either by the guard's rule or because it is the project
/// that is being continued, or was made from that, and that it can be written.
/// @param continued  empty if the project is new
Result<void> check_project_output(const OutputGuard& guard, const std::filesystem::path& target,
                                  const std::filesystem::path& continued);

/// What to do if the project file cannot hold everything.
enum class Losses { refuse, accept };

struct SavedProject {
    bool is_written = false;          ///< false only if there are losses that were not accepted
    std::filesystem::path backup{};   ///< the file as it was before; empty if that need not be kept
    std::vector<Failure> losses{};    ///< what the file does not hold, or would not have held
    std::vector<Failure> leftovers{}; ///< files that could not be removed
};

/// Why a project with so many losses was not written.
Failure refusal_of(const std::filesystem::path& file, std::size_t losses);

/// A failure for each name, and for each path of a recording, a render or the record folder, that a project
/// file cannot hold.
/// @param file  for the messages
/// @param folder  where the file will lie
std::vector<Failure> losses_of(const project::Project& project, const std::filesystem::path& file,
                               const std::filesystem::path& folder);

/// Saves the workstation's project as `file`, or as its target if `file` is a link. The folder must exist.
/// Paths of renders below that folder are relative to it, so that both can be moved together. A project of
/// another program is kept as back_up_original does.
Result<SavedProject> save_project_as(workstation::Workstation& workstation, const std::filesystem::path& file,
                                     Losses losses);

/// As save_project_as, but replaces an earlier project. The earlier project's renders are removed once the
/// new project has replaced it.
Result<SavedProject> save_project_over(const EarlierProject& earlier, workstation::Workstation& workstation,
                                       const std::filesystem::path& file, Losses losses);

} // namespace headless::jobs
