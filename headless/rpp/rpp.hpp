#pragma once
// The workstation's text project file: writes a Project and reads it back.

#include "headless/base/failure.hpp"
#include "headless/chunk/output.hpp"
#include "headless/project/project.hpp"

#include <filesystem>
#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace headless::rpp {

/// Writes `project` to `file`, completely or not at all: a failure leaves the old file untouched. What was
/// read and not changed comes out as it was, byte for byte. Paths that are written anew are relative if they
/// lie below the file's folder, else absolute. Objects that have no identifier get one. The same project gives
/// the same bytes.
Result<void> save_project(project::Project& project, const std::filesystem::path& file);

/// Reads the file into `project`, which must be empty. If `file` is a link, the target is read and becomes the
/// project's own path. Lines and blocks that the model does not know are kept for save_project. Fails with the path and
/// the number of the line at fault.
Result<void> load_project(project::Project& project, const std::filesystem::path& file);

/// A name that the file's syntax cannot hold unchanged.
struct ChangedName {
    std::string object; ///< the named object as text: "track 2"
    std::string name;
    std::string written; ///< what the file holds instead
};

/// The names that do not read back unchanged: those with line breaks, and those of markers and regions with
/// all three kinds of quote.
std::vector<ChangedName> names_that_do_not_fit(const project::Project& project);

/// The paths of audio files and of the record folder that the file's syntax cannot hold: those with line
/// breaks, or with all three kinds of quote. They are written with other characters instead, so they will not
/// be found.
/// @param folder where the file will lie
std::vector<std::filesystem::path> paths_that_do_not_fit(const project::Project& project,
                                                         const std::filesystem::path& folder);

/// Whether `file` is a project file that save_project wrote; false where no regular file lies. Fails, naming
/// it, when it cannot be read.
Result<bool> is_own_project(const std::filesystem::path& file);

/// The text that begins the files of save_project if the project did not come from another program.
std::string_view beginning_of_own_projects();

/// Writes the text of save_project in pieces.
void write_project(project::Project& project, const std::filesystem::path& folder,
                   const chunk::Output::Sink& sink);

/// Returns the text that save_project writes.
/// @param folder where the file will lie; paths of audio below it are relative to it
std::string project_text(project::Project& project, const std::filesystem::path& folder);

/// As load_project, from a text. Failures name the line.
Result<void> parse_project(project::Project& project, std::string text, const std::filesystem::path& folder);

} // namespace headless::rpp
