#pragma once
// The end of a run: its project file, and what is told when there is no run at all.

#include "headless/base/failure.hpp"

#include <filesystem>
#include <vector>

namespace headless {

class Workstation;

/// Tells the failure on standard error. @returns the exit status for it
int cannot_begin(const Failure& failure);

/// The absolute path of a file to be made in an existing folder, through no link but the file itself.
std::filesystem::path with_true_folder(const std::filesystem::path& file);

/// Saves the workstation's project as `file`, whose folder exists. Renders below that folder are named from
/// it, so that both can be moved together.
/// @returns a failure for each recording and render whose path the project file cannot hold
Result<std::vector<Failure>> save_project_as(Workstation& workstation, const std::filesystem::path& file);

} // namespace headless
