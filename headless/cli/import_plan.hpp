#pragma once
// What an import is asked to do, and all that can be known about it before anything is touched.

#include "headless/base/failure.hpp"
#include "headless/output/output_guard.hpp"
#include "headless/report/line_survey.hpp"

#include <filesystem>
#include <string>
#include <vector>

namespace headless {

/// As the user gave it.
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
    std::filesystem::path output; ///< empty: `onto`, else by the subject folder's name
    std::filesystem::path onto;   ///< empty: a new project
    std::filesystem::path unmatched;
    std::filesystem::path csv;
    std::filesystem::path plugin; ///< empty: where it was built or installed
    bool json = false;
    bool is_dry_run = false;
};

struct ImportPlan {
    std::filesystem::path subject; ///< absolute, without links
    std::filesystem::path base;
    std::filesystem::path project; ///< as it will be shown; the file that will be written
    std::vector<std::filesystem::path> subject_lines;
    std::vector<std::filesystem::path> base_lines;
    LineSurvey survey;
};

/// Looks into both folders. Fails, naming the path, when one is no folder or cannot be read, and when one is
/// the other or lies in it, since lines would then be their own partners.
Result<ImportPlan> plan_import(const ImportOptions& options);

/// Whether all that will be written may be, and can be. Nothing is left behind.
Result<void> check_outputs(const ImportOptions& options, const ImportPlan& plan, const OutputGuard& guard);

/// Whether renders in this folder would stay out of the two that were asked for: in there the next import
/// would take them for lines.
Result<void> check_render_folder(const ImportPlan& plan, const std::filesystem::path& folder);

} // namespace headless
