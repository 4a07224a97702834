#include "headless/jobs/import_plan.hpp"

#include "headless/jobs/project_output.hpp"

#include <algorithm>
#include <set>
#include <system_error>

namespace headless::jobs {
namespace {

namespace fs = std::filesystem;

Result<fs::path> true_folder(const fs::path& folder) {
    std::error_code error;
    const fs::path found = fs::canonical(folder, error);
    if (error)
        return tl::unexpected(Failure{folder.string() + ": " + error.message()});
    if (!fs::is_directory(found, error))
        return tl::unexpected(Failure{folder.string() + ": is no folder"});
    return found;
}

/// Both paths must be without links. Also true for the folder itself.
bool lies_in(const fs::path& path, const fs::path& folder) {
    return std::ranges::mismatch(folder, path).in1 == folder.end();
}

Result<void> check_apart(const ImportPlan& plan) {
    if (plan.subject == plan.base)
        return tl::unexpected(Failure{plan.subject.string() + ": is both the subject and the base folder"});
    const bool subject_is_inner = lies_in(plan.subject, plan.base);
    if (!subject_is_inner && !lies_in(plan.base, plan.subject))
        return {};
    const fs::path& inner = subject_is_inner ? plan.subject : plan.base;
    const fs::path& outer = subject_is_inner ? plan.base : plan.subject;
    return tl::unexpected(Failure{inner.string() + ": lies in " + outer.string() +
                                  ", so its lines would belong to both sides"});
}

fs::path project_of(const ImportOptions& options, const fs::path& subject) {
    if (!options.output.empty())
        return options.output;
    if (!options.onto.empty())
        return options.onto;
    const std::string name = subject.filename().string();
    return (name.empty() ? "import" : name) + ".rpp";
}

Result<void> check_distinct(const std::vector<fs::path>& outputs) {
    std::set<fs::path> seen;
    for (const fs::path& output : outputs) {
        std::error_code error;
        if (!output.empty() && !seen.insert(fs::weakly_canonical(fs::absolute(output), error)).second)
            return tl::unexpected(Failure{output.string() + ": is to be written twice"});
    }
    return {};
}

} // namespace

Result<ImportPlan> plan_import(const ImportOptions& options) {
    const auto subject = true_folder(options.subject);
    if (!subject)
        return tl::unexpected(subject.error());
    const auto base = true_folder(options.base);
    if (!base)
        return tl::unexpected(base.error());
    ImportPlan plan{*subject, *base, project_of(options, *subject), {}, {}, {}};
    if (const auto apart = check_apart(plan); !apart)
        return tl::unexpected(apart.error());
    auto subject_lines = matching::find_lines(plan.subject);
    if (!subject_lines)
        return tl::unexpected(subject_lines.error());
    auto base_lines = matching::find_lines(plan.base);
    if (!base_lines)
        return tl::unexpected(base_lines.error());
    plan.subject_lines = std::move(*subject_lines);
    plan.base_lines = std::move(*base_lines);
    plan.survey = matching::survey_lines(plan.subject_lines, plan.base_lines);
    return plan;
}

Result<void> check_outputs(const ImportOptions& options, const ImportPlan& plan, const OutputGuard& guard) {
    return check_distinct({plan.project, options.unmatched, options.csv})
        .and_then([&] { return check_project_output(guard, plan.project, options.onto); })
        .and_then([&] {
            return options.unmatched.empty() ? Result<void>() : guard.permits_list(options.unmatched);
        })
        .and_then(
            [&] { return options.unmatched.empty() ? Result<void>() : check_writable(options.unmatched); })
        .and_then([&] { return options.csv.empty() ? Result<void>() : guard.permits_table(options.csv); })
        .and_then([&] { return options.csv.empty() ? Result<void>() : check_writable(options.csv); });
}

Result<void> check_render_folder(const ImportPlan& plan, const fs::path& folder) {
    std::error_code error;
    const fs::path found = fs::weakly_canonical(folder, error);
    for (const fs::path& side : {plan.subject, plan.base}) {
        if (lies_in(found, side))
            return tl::unexpected(
                Failure{folder.string() + ": renders would lie in " + side.string() +
                        ", where the next import would take them for lines; say with -o where "
                        "else the project is to be"});
    }
    return {};
}

} // namespace headless::jobs
