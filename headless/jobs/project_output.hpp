#pragma once
// Saves the project file at the end of a run.

#include "headless/base/failure.hpp"
#include "headless/jobs/output_guard.hpp"

#include <filesystem>
#include <string>
#include <vector>

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
/// that is being continued, and that it can be written.
/// @param continued  empty if the project is new
Result<void> check_project_output(const OutputGuard& guard, const std::filesystem::path& target,
                                  const std::filesystem::path& continued);

/// Keeps a backup of a project as "NAME-bak" beside it (beside the target if `project` is a link) if another
/// program saved it: it may hold data that this program does not know and would not write again.
/// @returns a message for the user, empty if there was nothing to keep
Result<std::string> back_up_foreign_original(const std::filesystem::path& project);

/// Saves the workstation's project as `file`, or as its target if `file` is a link. The folder must exist.
/// Paths of renders below that folder are relative to it, so that both can be moved together.
/// @returns a failure for each name, and for each path of a recording, a render or the record folder, that
/// the project file cannot hold
Result<std::vector<Failure>> save_project_as(workstation::Workstation& workstation,
                                             const std::filesystem::path& file);

/// As save_project_as, but replaces an earlier project. The earlier project's renders are removed once the
/// new project has replaced it.
/// @returns also a failure for each file that could not be removed
Result<std::vector<Failure>> save_project_over(const EarlierProject& earlier,
                                               workstation::Workstation& workstation,
                                               const std::filesystem::path& file);

} // namespace headless::jobs
