#pragma once
// The workstation's text project file: a Project written to it and read back from it.

#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"

#include <filesystem>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// Writes `project` to `file`, whole or not at all: a failure leaves what was there. Audio below the file's
/// folder is named relative to it, other audio absolutely. The same project gives the same bytes.
Result<void> save_project(const Project& project, const std::filesystem::path& file);

/// Reads everything that the model holds into `project`, which must be empty; lines and blocks it does not
/// know are skipped. Fails with the path and the number of the line at fault.
Result<void> load_project(Project& project, const std::filesystem::path& file);

/// The audio files whose paths the file's syntax cannot hold: those with line breaks or other control
/// characters, or with all three kinds of quote. They are written with other characters in their place, so
/// the audio will not be found from there.
std::vector<std::filesystem::path> paths_that_do_not_fit(const Project& project);

/// True when `file` is a project file that save_project wrote.
bool is_own_project(const std::filesystem::path& file);

/// The text that save_project writes.
/// @param folder where the file will lie; audio below it is named relative to it
std::string project_text(const Project& project, const std::filesystem::path& folder);

/// What load_project does, from a text. Failures name the line.
Result<void> parse_project(Project& project, std::string_view text, const std::filesystem::path& folder);

} // namespace headless
