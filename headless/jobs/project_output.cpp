#include "headless/jobs/project_output.hpp"

#include "common/paths.hpp"
#include "headless/base/atomic_file.hpp"
#include "headless/base/folder.hpp"
#include "headless/jobs/earlier_project.hpp"
#include "headless/jobs/project_backup.hpp"
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
    std::filesystem::path found = paths::weakly_canonical(file, error);
    return error ? paths::absolute(file, error) : found;
}

Result<void> check_writable(const std::filesystem::path& target) {
    return AtomicFile::create(target).map([](const AtomicFile&) {});
}

Result<void> check_project_output(const OutputGuard& guard, const std::filesystem::path& target,
                                  const std::filesystem::path& continued) {
    std::error_code error;
    const bool stays_in_place = std::filesystem::equivalent(target, continued, error);
    const auto permitted = stays_in_place ? Result<void>() : guard.permits_project(target, continued);
    return permitted.and_then([&] { return check_writable(target); });
}

Failure refusal_of(const std::filesystem::path& file, std::size_t losses) {
    return path_failure(file, "not written, as it cannot hold " + std::to_string(losses) +
                                  (losses == 1 ? " name or path" : " names or paths") +
                                  "; --accept-losses writes it all the same");
}

std::vector<Failure> losses_of(const project::Project& project, const std::filesystem::path& file,
                               const std::filesystem::path& folder) {
    const std::string cannot_hold = file.string() + ": cannot hold ";
    std::vector<Failure> losses;
    for (const std::filesystem::path& lost : rpp::paths_that_do_not_fit(project, folder))
        losses.push_back(
            {cannot_hold + "the path of " + lost.string() + ", which will not be found from it"});
    for (const rpp::ChangedName& changed : rpp::names_that_do_not_fit(project))
        losses.push_back({cannot_hold + "the name of " + changed.object + ": \"" + changed.name +
                          "\" is written as \"" + changed.written + '"'});
    return losses;
}

Result<SavedProject> save_project_as(workstation::Workstation& workstation, const std::filesystem::path& file,
                                     Losses losses) {
    project::Project& project = workstation.project();
    const auto place = resolve_links(file);
    if (!place)
        return tl::unexpected(place.error());
    const std::filesystem::path target = true_path(*place);
    if (target != project.file && !project.record_path.empty())
        project.record_path = seen_from(target.parent_path(), workstation.render_folder());
    project.file = target;
    SavedProject saved{.losses = losses_of(project, file, target.parent_path())};
    if (!saved.losses.empty() && losses == Losses::refuse)
        return saved;
    auto written = rpp::write_new_file(project, target);
    if (!written)
        return tl::unexpected(written.error());
    return back_up_original(project, target, *written)
        .and_then([&](const std::filesystem::path& backup) {
            saved.backup = backup.empty() ? backup : place->parent_path() / backup.filename();
            return written->publish(ExistingFile::replace);
        })
        .and_then([&] { return flush_folder(target.parent_path()); })
        .map([&] {
            saved.is_written = true;
            return std::move(saved);
        });
}

Result<SavedProject> save_project_over(const EarlierProject& earlier, workstation::Workstation& workstation,
                                       const std::filesystem::path& file, Losses losses) {
    return save_project_as(workstation, file, losses).map([&](SavedProject&& saved) {
        if (saved.is_written)
            saved.leftovers = earlier.remove_replaced_renders(workstation.project());
        return std::move(saved);
    });
}

} // namespace headless::jobs
