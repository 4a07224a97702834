#include "headless/jobs/import_plan.hpp"

#include "common/path_text.hpp"
#include "common/paths.hpp"
#include "headless/jobs/project_output.hpp"

#include <algorithm>
#include <set>
#include <system_error>
#include <utility>

namespace headless::jobs {
namespace {

namespace fs = std::filesystem;

Result<fs::path> true_folder(const fs::path& folder) {
    std::error_code error;
    const fs::path found = paths::canonical(folder, error);
    if (error)
        return tl::unexpected(system_failure(folder, error.value()));
    if (!fs::is_directory(found, error))
        return tl::unexpected(path_failure(folder, "is no folder"));
    return found;
}

/// Both paths must be without links. Also true for the folder itself.
bool lies_in(const fs::path& path, const fs::path& folder) {
    return std::ranges::mismatch(folder, path).in1 == folder.end();
}

Result<void> check_apart(const ImportPlan& plan) {
    if (plan.subject == plan.base)
        return tl::unexpected(path_failure(plan.subject, "is both the subject and the base folder"));
    const bool subject_is_inner = lies_in(plan.subject, plan.base);
    if (!subject_is_inner && !lies_in(plan.base, plan.subject))
        return {};
    const fs::path& inner = subject_is_inner ? plan.subject : plan.base;
    const fs::path& outer = subject_is_inner ? plan.base : plan.subject;
    return tl::unexpected(
        path_failure(inner, "lies in " + outer.string() + ", so its lines would belong to both sides"));
}

fs::path project_of(const ImportOptions& options, const fs::path& subject) {
    if (!options.output.empty())
        return options.output;
    if (!options.onto.empty())
        return options.onto;
    const std::string name = subject.filename().string();
    return path_text::path_of((name.empty() ? "import" : name) + ".rpp");
}

Result<void> check_distinct(const std::vector<fs::path>& outputs) {
    std::set<fs::path> seen;
    for (const fs::path& output : outputs) {
        std::error_code error;
        const fs::path whole = paths::weakly_canonical(output, error);
        if (!output.empty() && !seen.insert(error ? output : whole).second)
            return tl::unexpected(path_failure(output, "is to be written twice"));
    }
    return {};
}

/// @param target  empty if that output is not wanted
Result<void> check_text_output(const fs::path& target, const OutputGuard& guard,
                               Result<void> (OutputGuard::*permits)(const fs::path&) const) {
    if (target.empty())
        return {};
    return (guard.*permits)(target).and_then([&] { return check_writable(target); });
}

} // namespace

Result<ImportPlan> plan_import(const ImportOptions& options) {
    ImportPlan plan;
    return true_folder(options.subject)
        .and_then([&](fs::path&& folder) {
            plan.subject = std::move(folder);
            return true_folder(options.base);
        })
        .and_then([&](fs::path&& folder) {
            plan.base = std::move(folder);
            return check_apart(plan);
        })
        .and_then([&] { return matching::find_lines(plan.subject); })
        .and_then([&](std::vector<fs::path>&& lines) {
            plan.subject_lines = std::move(lines);
            return matching::find_lines(plan.base);
        })
        .map([&](std::vector<fs::path>&& lines) {
            plan.base_lines = std::move(lines);
            plan.survey = matching::survey_lines(plan.subject_lines, plan.base_lines);
            plan.project = project_of(options, plan.subject);
            return std::move(plan);
        });
}

Result<void> check_outputs(const ImportOptions& options, const ImportPlan& plan, const OutputGuard& guard) {
    return check_distinct({plan.project, options.unmatched, options.csv})
        .and_then([&] { return check_project_output(guard, plan.project, options.onto); })
        .and_then([&] { return check_text_output(options.unmatched, guard, &OutputGuard::permits_list); })
        .and_then([&] { return check_text_output(options.csv, guard, &OutputGuard::permits_table); });
}

Result<void> check_render_folder(const ImportPlan& plan, const fs::path& folder) {
    std::error_code error;
    const fs::path found = paths::weakly_canonical(folder, error);
    for (const fs::path& side : {plan.subject, plan.base}) {
        if (lies_in(found, side))
            return tl::unexpected(path_failure(
                folder, "renders would lie in " + side.string() +
                            ", where the next import would take them for lines; say with -o where "
                            "else the project is to be"));
    }
    return {};
}

} // namespace headless::jobs
