#pragma once
// The end of a run: its project file.

#include "headless/base/failure.hpp"
#include "headless/output/output_guard.hpp"

#include <filesystem>
#include <string>
#include <vector>

namespace headless {

class Workstation;

/// The absolute path of a file to be made in an existing folder, through no link but the file itself.
std::filesystem::path with_true_folder(const std::filesystem::path& file);

/// Whether a file can be made there. Nothing is left behind.
Result<void> check_writable(const std::filesystem::path& target);

/// Whether a project may be written to `target`: by the guard's rule, or as it is the project that is being
/// continued; and whether it can.
/// @param continued  empty when the project is a new one
Result<void> check_project_output(const OutputGuard& guard, const std::filesystem::path& target,
                                  const std::filesystem::path& continued);

/// Keeps a project beside itself as "NAME-bak" when something else has saved it: it may hold what this
/// program does not know, and would not write again.
/// @returns what the user should know of it, empty when there was nothing to keep
Result<std::string> keep_foreign_original(const std::filesystem::path& project);

/// Saves the workstation's project as `file`, whose folder exists. Renders below that folder are named from
/// it, so that both can be moved together.
/// @returns a failure for each recording and render whose path the project file cannot hold
Result<std::vector<Failure>> save_project_as(Workstation& workstation, const std::filesystem::path& file);

} // namespace headless
