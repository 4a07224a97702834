#include "headless/output/project_output.hpp"

#include "headless/base/staged_file.hpp"
#include "headless/host/workstation.hpp"
#include "headless/rpp/rpp.hpp"

#include <string>
#include <system_error>

namespace headless {
namespace {

/// Relative when it lies below the folder, else as it is.
std::filesystem::path seen_from(const std::filesystem::path& folder, const std::filesystem::path& path) {
    const std::filesystem::path relative = path.lexically_relative(folder);
    return relative.empty() || *relative.begin() == ".." ? path : relative;
}

} // namespace

std::filesystem::path with_true_folder(const std::filesystem::path& file) {
    return std::filesystem::canonical(std::filesystem::absolute(file).parent_path()) / file.filename();
}

Result<void> check_writable(const std::filesystem::path& target) {
    return StagedFile::create(target).map([](const StagedFile&) {});
}

Result<void> check_project_output(const OutputGuard& guard, const std::filesystem::path& target,
                                  const std::filesystem::path& continued) {
    std::error_code error;
    const bool stays_in_place = std::filesystem::equivalent(target, continued, error);
    const auto permitted = stays_in_place ? Result<void>() : guard.permits_project(target);
    return permitted.and_then([&] { return check_writable(target); });
}

Result<std::string> keep_foreign_original(const std::filesystem::path& project) {
    namespace fs = std::filesystem;
    std::error_code error;
    if (!fs::exists(project, error) || is_own_project(project))
        return "";
    fs::path kept = project.string() + "-bak";
    for (int number = 2; fs::exists(fs::symlink_status(kept, error)); ++number)
        kept = project.string() + "-bak" + std::to_string(number);
    fs::copy_file(project, kept, error);
    if (error)
        return tl::unexpected(
            Failure{kept.string() + ": cannot keep the project as it was: " + error.message()});
    return project.string() +
           ": was saved elsewhere and may lose what is not known here; as it was it is kept as " +
           kept.string();
}

Result<std::vector<Failure>> save_project_as(Workstation& workstation, const std::filesystem::path& file) {
    Project& project = workstation.project();
    const std::filesystem::path target = with_true_folder(file);
    if (target != project.file && !project.record_path.empty())
        project.record_path = seen_from(target.parent_path(), workstation.render_folder());
    project.file = target;
    return save_project(project, target).map([&] {
        std::vector<Failure> losses;
        for (const std::filesystem::path& lost : paths_that_do_not_fit(project))
            losses.push_back({file.string() + ": cannot hold the path of " + lost.string() +
                              ", which will not be found from it"});
        return losses;
    });
}

} // namespace headless
