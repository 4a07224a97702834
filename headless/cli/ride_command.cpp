#include "headless/cli/ride_command.hpp"

#include "headless/cli/messages.hpp"
#include "headless/cli/plugin_location.hpp"
#include "headless/cli/ride_session.hpp"
#include "headless/output/output_guard.hpp"
#include "headless/output/project_output.hpp"
#include "headless/report/ride_reporter.hpp"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace headless {
namespace {

constexpr const char* default_folder = "ridden";

struct RideOptions {
    std::vector<std::filesystem::path> files;
    std::filesystem::path folder; ///< empty: the default one, made if missing
    std::filesystem::path project;
    std::filesystem::path plugin; ///< empty: where it was built or installed
    int ratio = 0;
    bool json = false;
};

Result<std::filesystem::path> output_folder(const RideOptions& options) {
    const std::filesystem::path folder = options.folder.empty() ? default_folder : options.folder;
    std::error_code error;
    if (options.folder.empty())
        std::filesystem::create_directory(folder, error);
    if (error)
        return tl::unexpected(
            Failure{folder.string() + ": cannot make the output folder: " + error.message()});
    if (!std::filesystem::is_directory(folder, error))
        return tl::unexpected(Failure{folder.string() + ": the output folder does not exist"});
    return folder;
}

Result<RideSession> open_session(const RideOptions& options, OutputGuard& guard) {
    if (!options.project.empty()) {
        if (const auto permitted = guard.permits_project(options.project); !permitted)
            return tl::unexpected(permitted.error());
    }
    const auto plugin = find_plugin(options.plugin);
    if (!plugin)
        return tl::unexpected(plugin.error());
    return RideSession::open(*plugin, guard);
}

void ride_all(RideSession& session, const RideOptions& options, RideReporter& reporter) {
    for (const std::filesystem::path& file : options.files) {
        reporter.begin(file);
        if (const auto report = session.ride(file, options.ratio))
            reporter.ridden(*report);
        else
            reporter.failed(file, report.error());
    }
}

/// @returns the path of the project file written, empty when there is none
std::filesystem::path save_project(RideSession& session, const RideOptions& options, RideReporter& reporter) {
    if (options.project.empty() || reporter.ridden_count() == 0)
        return {};
    const auto saved = session.save(options.project);
    if (!saved) {
        reporter.failed(options.project, saved.error());
        return {};
    }
    for (const Failure& loss : *saved)
        reporter.failed(options.project, loss);
    return options.project;
}

int run(const RideOptions& options) {
    OutputGuard guard(options.files);
    auto session = open_session(options, guard);
    if (!session)
        return cannot_begin(session.error());
    const auto folder = output_folder(options);
    if (!folder)
        return cannot_begin(folder.error());
    session->set_folder(*folder);

    RideReporter reporter(std::cout, std::cerr, options.json ? ReportForm::json : ReportForm::text,
                          options.files.size(), STDERR_FILENO);
    ride_all(*session, options, reporter);
    const std::filesystem::path project = save_project(*session, options, reporter);
    reporter.finish(*folder, project);
    return reporter.anything_failed() || !std::cout ? 1 : 0;
}

} // namespace

void add_ride_command(CLI::App& app, int& exit_status) {
    const auto options = std::make_shared<RideOptions>();
    CLI::App* ride = app.add_subcommand("ride", "Ride the volume of recordings and render the result");
    ride->add_option("files", options->files, "Recordings, in any format that libsndfile reads")
        ->required()
        ->type_name("FILE");
    ride->add_option("-o,--output", options->folder,
                     "Existing folder for the rendered files (default: ridden/)")
        ->type_name("FOLDER");
    ride->add_option("--ratio", options->ratio,
                     "How hard loud passages are cut: 0 lightest (default), 3 and 4 hardest")
        ->check(CLI::Range(0, 4).description(""))
        ->type_name("0..4");
    ride->add_option("--project", options->project,
                     "Write a project file with every ride as editable envelope")
        ->type_name("FILE.rpp");
    ride->add_flag("--json", options->json, "Print one JSON object a file instead of the table");
    add_plugin_option(*ride, options->plugin);
    ride->callback([options, &exit_status] { exit_status = run(*options); });
}

} // namespace headless
