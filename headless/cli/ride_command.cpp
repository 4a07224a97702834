#include "headless/cli/ride_command.hpp"

#include "headless/base/interruption.hpp"
#include "headless/cli/messages.hpp"
#include "headless/cli/path_option.hpp"
#include "headless/cli/plugin_location.hpp"
#include "headless/cli/signals.hpp"
#include "headless/jobs/output_guard.hpp"
#include "headless/jobs/project_output.hpp"
#include "headless/jobs/ride_session.hpp"
#include "headless/report/ride_reporter.hpp"
#include "headless/system/terminal.hpp"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

namespace headless::cli {
namespace {

constexpr const char* default_folder = "ridden";

struct RideOptions {
    std::vector<std::filesystem::path> files;
    std::filesystem::path folder; ///< empty: the default one, made if missing
    std::filesystem::path project;
    std::filesystem::path plugin; ///< empty: where it was built or installed
    int ratio = 0;
    bool accepts_losses = false;
    bool json = false;
};

std::filesystem::path folder_of(const RideOptions& options) {
    return options.folder.empty() ? default_folder : options.folder;
}

Result<std::filesystem::path> output_folder(const RideOptions& options) {
    const std::filesystem::path folder = folder_of(options);
    std::error_code error;
    if (options.folder.empty())
        std::filesystem::create_directory(folder, error);
    if (error)
        return tl::unexpected(
            path_failure(folder, "cannot make the output folder: " + error.message(), FailureKind::system));
    if (!std::filesystem::is_directory(folder, error))
        return tl::unexpected(path_failure(folder, "the output folder does not exist"));
    return folder;
}

/// The project that the new one will replace, with its audio protected.
Result<jobs::EarlierProject> spare_earlier(const RideOptions& options, jobs::OutputGuard& guard) {
    if (options.project.empty())
        return {};
    return guard.permits_project(options.project)
        .and_then([&] { return jobs::check_writable(options.project); })
        .and_then([&] { return jobs::EarlierProject::read(options.project); })
        .map([&](jobs::EarlierProject&& earlier) {
            guard.spare(earlier.audio());
            return std::move(earlier);
        });
}

Result<jobs::RideSession> open_session(const RideOptions& options, jobs::OutputGuard& guard) {
    const auto plugin = find_plugin(options.plugin);
    if (!plugin)
        return tl::unexpected(plugin.error());
    return jobs::RideSession::open(*plugin, guard);
}

void ride_all(jobs::RideSession& session, const RideOptions& options, report::RideReporter& reporter) {
    for (const std::filesystem::path& file : options.files) {
        reporter.begin(file);
        const auto report = session.ride(file, options.ratio);
        if (report)
            reporter.ridden(*report);
        if (interruption::signal_number() != 0)
            return;
        if (!report)
            reporter.failed(file, report.error());
    }
}

/// @returns the path of the project file written, empty if there is none
std::filesystem::path save_project(jobs::RideSession& session, const RideOptions& options,
                                   const jobs::EarlierProject& earlier, report::RideReporter& reporter) {
    const bool is_interrupted = interruption::signal_number() != 0;
    if (options.project.empty() || reporter.ridden_count() == 0 || is_interrupted)
        return {};
    const auto saved = session.save(options.project, earlier,
                                    options.accepts_losses ? jobs::Losses::accept : jobs::Losses::refuse);
    if (!saved) {
        reporter.failed(options.project, saved.error());
        return {};
    }
    if (!saved->backup.empty())
        reporter.kept(options.project, saved->backup);
    for (const Failure& leftover : saved->leftovers)
        reporter.failed(options.project, leftover);
    if (saved->is_written)
        return options.project;
    reporter.failed(options.project, jobs::refusal_of(options.project, saved->losses.size()));
    return {};
}

/// Names what the project file will not hold.
/// @returns a failure if the user has not accepted that
Result<void> check_losses(const RideOptions& options) {
    if (options.project.empty())
        return {};
    const auto losses =
        jobs::losses_of_ride(options.files, jobs::true_path(folder_of(options)), options.project);
    for (const Failure& loss : losses)
        print_error(loss.message);
    if (losses.empty() || options.accepts_losses)
        return {};
    return tl::unexpected(jobs::refusal_of(options.project, losses.size()));
}

int run(const RideOptions& options) {
    watch_signals();
    jobs::OutputGuard guard(options.files);
    const auto earlier = spare_earlier(options, guard);
    if (!earlier)
        return cannot_begin(earlier.error());
    if (const auto permitted = check_losses(options); !permitted)
        return cannot_begin(permitted.error());
    auto session = open_session(options, guard);
    if (!session)
        return cannot_begin(session.error());
    const auto folder = output_folder(options);
    if (!folder)
        return cannot_begin(folder.error());
    session->set_folder(*folder);

    report::RideReporter reporter(std::cout, std::cerr,
                                  options.json ? report::ReportForm::json : report::ReportForm::text,
                                  options.files.size(), system::standard_error);
    ride_all(*session, options, reporter);
    const std::filesystem::path project = save_project(*session, options, *earlier, reporter);
    reporter.finish(*folder, project);
    const bool is_told = finish_output();
    if (interruption::signal_number() != 0)
        return print_interruption("what was ridden stays" +
                                  std::string(options.project.empty() ? "" : ", no project was written"));
    return reporter.anything_failed() || !is_told ? 1 : 0;
}

} // namespace

void add_ride_command(CLI::App& app, int& exit_status) {
    const auto options = std::make_shared<RideOptions>();
    CLI::App* ride = app.add_subcommand("ride", "Ride the volume of recordings and render the result");
    add_path_option(*ride, "files", options->files, "Recordings, in any format that libsndfile reads")
        ->required()
        ->type_name("FILE");
    add_path_option(*ride, "-o,--output", options->folder,
                    "Existing folder for the rendered files (default: ridden/)")
        ->type_name("FOLDER");
    ride->add_option("--ratio", options->ratio,
                     "How hard loud passages are cut: 0 lightest (default), 3 and 4 hardest")
        ->check(CLI::Range(0, 4).description(""))
        ->type_name("0..4");
    add_path_option(*ride, "--project", options->project,
                    "Write a project file with every ride as editable envelope")
        ->type_name("FILE.rpp");
    add_losses_option(*ride, options->accepts_losses);
    ride->add_flag("--json", options->json, "Print one JSON object a file instead of the table");
    add_plugin_option(*ride, options->plugin);
    ride->callback([options, &exit_status] { exit_status = run(*options); });
}

} // namespace headless::cli
