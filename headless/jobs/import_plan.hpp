#pragma once
// The options of an import, and everything that can be checked before any file is changed.

#include "headless/base/failure.hpp"
#include "headless/jobs/output_guard.hpp"
#include "headless/matching/line_survey.hpp"

#include <filesystem>
#include <string>
#include <vector>

namespace headless::jobs {

/// The options as the user gave them.
struct ImportOptions {
    std::filesystem::path subject;
    std::filesystem::path base;
    std::vector<std::string> groups;
    double start_seconds = 0.0;
    bool counts_from_end = false;
    double interval_seconds = 0.0;
    bool match = false;
    bool ride = false;
    int ratio = 0;
    bool reads_coarsely = false;
    std::filesystem::path output; ///< empty: `onto`, else named after the subject folder
    std::filesystem::path onto;   ///< empty: a new project
    std::filesystem::path unmatched;
    std::filesystem::path csv;
    std::filesystem::path plugin; ///< empty: where it was built or installed
    bool accepts_losses = false;
    bool json = false;
    bool is_dry_run = false;
};

struct ImportPlan {
    std::filesystem::path subject; ///< absolute, without links
    std::filesystem::path base;
    std::filesystem::path project; ///< the file that will be written, as shown to the user
    std::vector<std::filesystem::path> subject_lines;
    std::vector<std::filesystem::path> base_lines;
    matching::LineSurvey survey;
};

/// Reads both folders. Fails, naming the path, if either is not a folder or cannot be read, and if the
/// folders are the same or one lies in the other, since lines would then be paired with themselves.
Result<ImportPlan> plan_import(const ImportOptions& options);

/// Checks that everything that will be written may be written, and can be. Leaves no files behind.
Result<void> check_outputs(const ImportOptions& options, const ImportPlan& plan, const OutputGuard& guard);

/// Checks that renders in this folder would lie outside the subject and base folders; inside, the next import
/// would take them for lines.
Result<void> check_render_folder(const ImportPlan& plan, const std::filesystem::path& folder);

} // namespace headless::jobs
