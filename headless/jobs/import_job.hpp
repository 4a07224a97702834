#pragma once
// An import from its options to the written project and lists.

#include "headless/base/failure.hpp"
#include "headless/jobs/import_plan.hpp"
#include "headless/report/import_report.hpp"

#include <cstddef>
#include <filesystem>
#include <functional>

namespace headless::jobs {

/// Called with the base file of every pair before its work begins, and with the number of all pairs.
using BeginPair = std::function<void(const std::filesystem::path& base, std::size_t pairs)>;

/// Imports as the options say. A dry run writes nothing.
/// @param plugin  the plug-in's library, or why it was not found; that failure comes after those of the
/// options
/// @returns what was done, with the failures of single lines and outputs; a failure if the import could not
/// begin, or of the kind `interrupted` if a signal ended it. After a failure all files are as they were
/// before
Result<report::ImportReport> run_import(const ImportOptions& options, Result<std::filesystem::path> plugin,
                                        const BeginPair& begin_pair);

} // namespace headless::jobs
