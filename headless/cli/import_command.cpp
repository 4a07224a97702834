#include "headless/cli/import_command.hpp"

#include "headless/base/failure.hpp"
#include "headless/cli/messages.hpp"
#include "headless/cli/path_option.hpp"
#include "headless/cli/plugin_location.hpp"
#include "headless/cli/signals.hpp"
#include "headless/jobs/import_job.hpp"
#include "headless/jobs/import_plan.hpp"
#include "headless/report/import_report.hpp"
#include "headless/report/progress.hpp"
#include "headless/system/terminal.hpp"

#include <CLI/CLI.hpp>

#include <cmath>
#include <cstddef>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

namespace headless::cli {
namespace {

Result<report::ImportReport> import_with_progress(const jobs::ImportOptions& options) {
    report::Progress progress(system::standard_error);
    std::size_t number = 0;
    return jobs::run_import(options, find_plugin(options.plugin),
                            [&](const std::filesystem::path& base, std::size_t pairs) {
                                progress.show(++number, pairs, base.filename().string());
                            });
}

int print(const jobs::ImportOptions& options, const report::ImportReport& report) {
    for (const std::string& notice : report.notices)
        print_error(notice);
    for (const std::string& loss : report.losses)
        print_error(loss);
    for (const std::string& failure : report.failures)
        print_error(failure);
    std::cout << (options.json ? report::json_summary(report) : report::text_summary(report));
    return finish_output() && report.failures.empty() ? 0 : 1;
}

int run(const jobs::ImportOptions& options) {
    watch_signals();
    const auto report = import_with_progress(options);
    return report ? print(options, *report) : print_early_end(report.error());
}

void check_together(const jobs::ImportOptions& options) {
    if (options.ride && !options.match)
        throw CLI::ValidationError("--ride", "needs --match: without it the import would not ride");
    if (options.is_dry_run && !(options.unmatched.empty() && options.csv.empty()))
        throw CLI::ValidationError("--dry-run", "writes nothing, so it goes without --unmatched and --csv");
    if (!std::isfinite(options.start_seconds) || !std::isfinite(options.interval_seconds))
        throw CLI::ValidationError("--start, --interval", "must be finite numbers");
}

void add_levels_options(CLI::App& command, jobs::ImportOptions& options) {
    command.add_flag("--match", options.match,
                     "Bring each subject line to the momentary maximum of its base line");
    command.add_flag("--ride", options.ride, "Ride the volume of each subject line first; needs --match");
    command
        .add_option("--ratio", options.ratio,
                    "How hard the ride cuts loud passages: 0 lightest (default), 3 and 4 hardest")
        ->check(CLI::Range(0, 4).description(""))
        ->type_name("0..4");
    const auto set_hop = [&options](const std::string& word) { options.reads_coarsely = word == "coarse"; };
    command
        .add_option_function<std::string>(
            "--loudness", set_hop,
            "How momentary loudness is read: precise, every 10 ms (default), or coarse, every 400 ms")
        ->check(CLI::IsMember({"precise", "coarse"}).description(""))
        ->type_name("precise|coarse");
}

void add_place_options(CLI::App& command, jobs::ImportOptions& options) {
    command
        .add_option(
            "--group", options.groups,
            "Lines whose names contain NAME get tracks of their own; may be repeated, the first counts")
        ->type_name("NAME")
        ->allow_extra_args(false);
    command
        .add_option("--start", options.start_seconds, "Where the first line begins, in seconds (default: 0)")
        ->type_name("S");
    command.add_flag("--from-end", options.counts_from_end, "--start counts from the project's end");
    command.add_option("--interval", options.interval_seconds, "Seconds behind every line (default: 0)")
        ->type_name("S");
}

void add_output_options(CLI::App& command, jobs::ImportOptions& options) {
    add_path_option(command, "-o,--output", options.output,
                    "The project file to write (default: the --onto project, else SUBJECT's name here)")
        ->type_name("PROJECT.rpp");
    add_path_option(command, "--onto", options.onto, "Go on with this project")->type_name("PROJECT.rpp");
    add_losses_option(command, options.accepts_losses);
    add_path_option(command, "--unmatched", options.unmatched,
                    "Write the subject lines without a partner, one path a line")
        ->type_name("FILE");
    add_path_option(command, "--csv", options.csv, "Write one line a pair, for a spreadsheet")
        ->type_name("FILE");
    command.add_flag("--json", options.json, "Print the summary as one JSON object");
    command.add_flag("--dry-run", options.is_dry_run, "Only show groups, pairs and unmatched lines");
    add_plugin_option(command, options.plugin);
}

} // namespace

void add_import_command(CLI::App& app, int& exit_status) {
    const auto options = std::make_shared<jobs::ImportOptions>();
    CLI::App* command = app.add_subcommand("import", "Lay two folders of localised lines out, pair by pair");
    add_path_option(*command, "subject", options->subject,
                    "Folder of the lines to be worked on, with all below it")
        ->required()
        ->type_name("SUBJECT");
    add_path_option(*command, "base", options->base, "Folder of the lines that they are held against")
        ->required()
        ->type_name("BASE");
    add_place_options(*command, *options);
    add_levels_options(*command, *options);
    add_output_options(*command, *options);
    command->callback([options, &exit_status] {
        check_together(*options);
        exit_status = run(*options);
    });
}

} // namespace headless::cli
