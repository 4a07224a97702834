#include "headless/jobs/project_output.hpp"

#include "headless/base/atomic_file.hpp"
#include "headless/base/folder.hpp"
#include "headless/jobs/earlier_project.hpp"
#include "headless/rpp/rpp.hpp"
#include "headless/workstation/workstation.hpp"

#include <string>
#include <system_error>

namespace headless::jobs {
namespace {

/// Relative if it lies below the folder, otherwise unchanged.
std::filesystem::path seen_from(const std::filesystem::path& folder, const std::filesystem::path& path) {
    const std::filesystem::path relative = path.lexically_relative(folder);
    return relative.empty() || *relative.begin() == ".." ? path : relative;
}

} // namespace

std::filesystem::path true_path(const std::filesystem::path& file) {
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(file, error);
    std::filesystem::path found = std::filesystem::weakly_canonical(absolute, error);
    return error ? absolute : found;
}

Result<void> check_writable(const std::filesystem::path& target) {
    return AtomicFile::create(target).map([](const AtomicFile&) {});
}

Result<void> check_project_output(const OutputGuard& guard, const std::filesystem::path& target,
                                  const std::filesystem::path& continued) {
    std::error_code error;
    const bool stays_in_place = std::filesystem::equivalent(target, continued, error);
    const auto permitted = stays_in_place ? Result<void>() : guard.permits_project(target);
    return permitted.and_then([&] { return check_writable(target); });
}

Result<std::string> back_up_foreign_original(const std::filesystem::path& file) {
    namespace fs = std::filesystem;
    const auto project = resolve_links(file);
    if (!project)
        return tl::unexpected(project.error());
    std::error_code error;
    const auto is_own = rpp::is_own_project(*project);
    if (!is_own)
        return tl::unexpected(is_own.error());
    if (*is_own || !fs::exists(*project, error))
        return "";
    fs::path kept = project->string() + "-bak";
    for (int number = 2; fs::exists(fs::symlink_status(kept, error)); ++number)
        kept = project->string() + "-bak" + std::to_string(number);
    return copy_atomically(*project, kept)
        .map_error([](const Failure& failure) {
            return with_remark(failure, "the project cannot be kept as it was");
        })
        .map([&] {
            return project->string() +
                   ": was saved elsewhere and may lose what is not known here; as it was it is kept as " +
                   kept.string();
        });
}

Result<std::vector<Failure>> save_project_as(workstation::Workstation& workstation,
                                             const std::filesystem::path& file) {
    project::Project& project = workstation.project();
    const auto place = resolve_links(file);
    if (!place)
        return tl::unexpected(place.error());
    const std::filesystem::path target = true_path(*place);
    if (target != project.file && !project.record_path.empty())
        project.record_path = seen_from(target.parent_path(), workstation.render_folder());
    project.file = target;
    const auto saved =
        rpp::save_project(project, target).and_then([&] { return flush_folder(target.parent_path()); });
    return saved.map([&] {
        const std::string cannot_hold = file.string() + ": cannot hold ";
        std::vector<Failure> losses;
        for (const std::filesystem::path& lost : rpp::paths_that_do_not_fit(project, target.parent_path()))
            losses.push_back(
                {cannot_hold + "the path of " + lost.string() + ", which will not be found from it"});
        for (const rpp::ChangedName& changed : rpp::names_that_do_not_fit(project))
            losses.push_back({cannot_hold + "the name of " + changed.object + ": \"" + changed.name +
                              "\" is written as \"" + changed.written + '"'});
        return losses;
    });
}

Result<std::vector<Failure>> save_project_over(const EarlierProject& earlier,
                                               workstation::Workstation& workstation,
                                               const std::filesystem::path& file) {
    return save_project_as(workstation, file).map([&](std::vector<Failure>&& losses) {
        const auto left = earlier.remove_replaced_renders(workstation.project());
        losses.insert(losses.end(), left.begin(), left.end());
        return std::move(losses);
    });
}

} // namespace headless::jobs
