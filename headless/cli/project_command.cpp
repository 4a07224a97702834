#include "headless/cli/project_command.hpp"

#include "headless/cli/messages.hpp"
#include "headless/cli/path_option.hpp"
#include "headless/jobs/project_survey.hpp"
#include "headless/report/project_report.hpp"
#include "headless/report/ride_report.hpp"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

namespace headless::cli {
namespace {

struct ProjectOptions {
    std::vector<std::filesystem::path> files;
    bool checks = false;
    bool json = false;
};

void print_failure(const ProjectOptions& options, const std::filesystem::path& file, const Failure& failure) {
    if (options.json)
        std::cout << report::json_failure_line(file, failure.message) << std::flush;
    print_error(failure.message);
}

/// @returns whether the project could be read and, if asked, is whole
bool show(const ProjectOptions& options, const std::filesystem::path& file) {
    const auto report = jobs::survey_project(file);
    if (!report) {
        print_failure(options, file, report.error());
        return false;
    }
    std::cout << (options.json     ? report::json_of(*report)
                  : options.checks ? report::text_of_check(*report)
                                   : report::text_of(*report));
    return !options.checks || (report->missing_media() == 0 && !report->is_cut_off);
}

int run(const ProjectOptions& options) {
    bool is_well = true;
    for (const std::filesystem::path& file : options.files)
        is_well = show(options, file) && is_well;
    return finish_output() && is_well ? 0 : 1;
}

} // namespace

void add_project_command(CLI::App& app, int& exit_status) {
    const auto options = std::make_shared<ProjectOptions>();
    CLI::App* command = app.add_subcommand("project", "Show what is in a project");
    add_path_option(*command, "files", options->files, "The project; with --check there may be several")
        ->required()
        ->type_name("FILE.rpp");
    command->add_flag("--json", options->json, "Print one JSON object a project");
    command->add_flag("--check", options->checks,
                      "Only list missing media files; the exit status is 1 if there are any");
    command->callback([options, &exit_status] {
        if (options->files.size() > 1 && !options->checks)
            throw CLI::ValidationError("FILE.rpp", "only --check takes several projects");
        exit_status = run(*options);
    });
}

} // namespace headless::cli
