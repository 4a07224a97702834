#pragma once
// Keeps a project that another program saved, before it is saved over.

#include "headless/base/atomic_file.hpp"
#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"

#include <filesystem>

namespace headless::jobs {

/// Whether both files begin with the same line, in which programs note when they saved. Saving here keeps that
/// line, so one of the files was made from the other by this program, or is its copy. False without a time.
Result<bool> share_time_of_saving(const std::filesystem::path& left, const std::filesystem::path& right);

/// Copies `file` to "NAME-bak" beside it, or "NAME-bak2" and so on, if another program saved it and what will
/// replace it differs. No copy is made if the last one has the file's first line, nor if the file was saved
/// here from the file of which `project` was read.
/// @param file  without links; need not exist
/// @param replacement  what `project` was written to
/// @returns the copy, empty if there was nothing to keep
Result<std::filesystem::path> back_up_original(const project::Project& project,
                                               const std::filesystem::path& file,
                                               const AtomicFile& replacement);

} // namespace headless::jobs
