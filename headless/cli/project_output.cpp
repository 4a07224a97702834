#include "headless/cli/project_output.hpp"

#include "headless/host/workstation.hpp"
#include "headless/report/printable.hpp"
#include "headless/rpp/rpp.hpp"

#include <iostream>

namespace headless {
namespace {

/// Relative when it lies below the folder, else as it is.
std::filesystem::path seen_from(const std::filesystem::path& folder, const std::filesystem::path& path) {
    const std::filesystem::path relative = path.lexically_relative(folder);
    return relative.empty() || *relative.begin() == ".." ? path : relative;
}

} // namespace

int cannot_begin(const Failure& failure) {
    std::cerr << "felspar: " << printable(failure.message) << std::endl;
    return 1;
}

std::filesystem::path with_true_folder(const std::filesystem::path& file) {
    return std::filesystem::canonical(std::filesystem::absolute(file).parent_path()) / file.filename();
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
