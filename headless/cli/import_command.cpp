#include "headless/cli/import_command.hpp"

#include "headless/base/atomic_file.hpp"
#include "headless/base/interruption.hpp"
#include "headless/cli/messages.hpp"
#include "headless/cli/plugin_location.hpp"
#include "headless/cli/signals.hpp"
#include "headless/jobs/disk_reservation.hpp"
#include "headless/jobs/import_plan.hpp"
#include "headless/jobs/import_session.hpp"
#include "headless/jobs/project_output.hpp"
#include "headless/report/printable.hpp"
#include "headless/report/progress.hpp"

#include <CLI/CLI.hpp>

#include <cmath>
#include <iostream>
#include <memory>
#include <optional>
#include <system_error>
#include <unistd.h>

namespace headless::cli {
namespace {

namespace fs = std::filesystem;

/// The folder for renders. Created if the import will need it, and removed again if it stays empty.
class RenderFolder {
public:
    static Result<RenderFolder> make(const fs::path& folder) {
        std::error_code error;
        const bool made = fs::create_directories(folder, error);
        if (error)
            return tl::unexpected(
                Failure{folder.string() + ": cannot make the folder for renders: " + error.message()});
        return RenderFolder(made ? folder : fs::path());
    }
    RenderFolder(RenderFolder&& other) noexcept : made_(std::exchange(other.made_, {})) {}
    RenderFolder& operator=(RenderFolder&&) = delete;
    ~RenderFolder() {
        std::error_code not_empty;
        if (!made_.empty())
            fs::remove(made_, not_empty);
    }

private:
    explicit RenderFolder(fs::path made) : made_(std::move(made)) {}

    fs::path made_;
};

Result<jobs::ImportSession> open_session(const jobs::ImportOptions& options, const jobs::ImportPlan& plan,
                                         jobs::OutputGuard& guard) {
    const auto plugin = find_plugin(options.plugin);
    if (!plugin)
        return tl::unexpected(plugin.error());
    auto session = jobs::ImportSession::open(*plugin, guard);
    if (!session)
        return session;
    if (options.onto.empty())
        session->begin_project(plan.project);
    else if (const auto loaded = session->continue_project(options.onto); !loaded)
        return tl::unexpected(loaded.error());
    return session;
}

/// All checks that can reject the import before it starts, except for the folder of renders.
Result<jobs::ImportSession> prepare(const jobs::ImportOptions& options, const jobs::ImportPlan& plan,
                                    jobs::OutputGuard& guard) {
    guard.protect(plan.subject_lines);
    guard.protect(plan.base_lines);
    if (!options.is_dry_run) {
        if (const auto permitted = jobs::check_outputs(options, plan, guard); !permitted)
            return tl::unexpected(permitted.error());
    }
    return open_session(options, plan, guard);
}

/// The project that the new one will replace, with its audio protected. If the import continues that project,
/// the result still plays all of its audio.
Result<jobs::EarlierProject> spare_earlier(const jobs::ImportPlan& plan, jobs::OutputGuard& guard) {
    return jobs::EarlierProject::read(plan.project).map([&](jobs::EarlierProject&& earlier) {
        guard.spare(earlier.audio());
        return std::move(earlier);
    });
}

void save(jobs::ImportSession& session, const jobs::ImportPlan& plan, const jobs::EarlierProject& earlier,
          report::ImportReport& report) {
    const auto kept = jobs::back_up_foreign_original(plan.project);
    if (kept && !kept->empty())
        print_error(*kept);
    const auto saved = kept.and_then([&](const std::string&) { return session.save(plan.project, earlier); });
    if (!saved) {
        report.failures.push_back(saved.error().message);
        return;
    }
    report.project = plan.project;
    for (const Failure& loss : *saved)
        report.failures.push_back(loss.message);
}

std::string list_of(const std::vector<fs::path>& files) {
    std::string list;
    for (const fs::path& file : files)
        list += report::printable(file.native()) + '\n';
    return list;
}

void write_lists(const jobs::ImportOptions& options, report::ImportReport& report) {
    const auto write = [&](const fs::path& file, const std::string& text) {
        if (file.empty())
            return;
        if (const auto written = write_file(file, text); !written)
            report.failures.push_back(written.error().message);
    };
    write(options.unmatched, list_of(report.unmatched));
    write(options.csv, report::csv_table(report.pairs));
}

/// Estimated size of the project in bytes: a fixed amount per pair, and a line of an envelope for each 10 ms
/// of a subject line, which takes a quarter of its audio or less.
std::uintmax_t expected_project_size(const jobs::ImportPlan& plan) {
    constexpr std::uintmax_t bytes_a_pair = 4096;
    std::uintmax_t bytes = bytes_a_pair * (plan.survey.pairs + 16);
    for (const fs::path& line : plan.subject_lines) {
        std::error_code error;
        const std::uintmax_t size = fs::file_size(line, error);
        bytes += error ? 0 : size / 4;
    }
    return bytes;
}

report::ImportReport import_pairs(jobs::ImportSession& session, const jobs::ImportOptions& options,
                                  const jobs::ImportPlan& plan) {
    report::Progress progress(STDERR_FILENO);
    std::size_t number = 0;
    return session.run(options, plan, [&](const fs::path& base) {
        progress.show(++number, plan.survey.pairs, base.filename().string());
    });
}

int print_errors(const jobs::ImportOptions& options, const report::ImportReport& report) {
    for (const std::string& failure : report.failures)
        print_error(failure);
    std::cout << (options.json ? report::json_summary(report) : report::text_summary(report));
    return finish_output() && report.failures.empty() ? 0 : 1;
}

/// An existing project stays as it was, and the renders of a project that will not be written are not needed.
int give_up(const jobs::ImportSession& session) {
    session.remove_renders();
    return print_interruption("nothing was imported");
}

int run(const jobs::ImportOptions& options) {
    watch_signals();
    const auto plan = jobs::plan_import(options);
    if (!plan)
        return cannot_begin(plan.error());
    jobs::OutputGuard guard({});
    auto session = prepare(options, *plan, guard);
    if (!session)
        return cannot_begin(session.error());
    if (options.is_dry_run) {
        const report::ImportReport report = import_pairs(*session, options, *plan);
        return interruption::signal_number() != 0 ? give_up(*session) : print_errors(options, report);
    }

    const auto earlier = spare_earlier(*plan, guard);
    if (!earlier)
        return cannot_begin(earlier.error());
    std::optional<RenderFolder> renders;
    if (options.ride) {
        const fs::path folder = session->render_folder();
        auto made =
            jobs::check_render_folder(*plan, folder).and_then([&] { return RenderFolder::make(folder); });
        if (!made)
            return cannot_begin(made.error());
        renders.emplace(std::move(*made));
    }
    jobs::DiskReservation project_room(jobs::true_path(plan->project).parent_path(),
                                       expected_project_size(*plan));
    report::ImportReport report = import_pairs(*session, options, *plan);
    if (interruption::signal_number() != 0)
        return give_up(*session);
    project_room.release();
    save(*session, *plan, *earlier, report);
    write_lists(options, report);
    return print_errors(options, report);
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
    command
        .add_option("-o,--output", options.output,
                    "The project file to write (default: the --onto project, else SUBJECT's name here)")
        ->type_name("PROJECT.rpp");
    command.add_option("--onto", options.onto, "Go on with this project")->type_name("PROJECT.rpp");
    command
        .add_option("--unmatched", options.unmatched,
                    "Write the subject lines without a partner, one path a line")
        ->type_name("FILE");
    command.add_option("--csv", options.csv, "Write one line a pair, for a spreadsheet")->type_name("FILE");
    command.add_flag("--json", options.json, "Print the summary as one JSON object");
    command.add_flag("--dry-run", options.is_dry_run, "Only show groups, pairs and unmatched lines");
    add_plugin_option(command, options.plugin);
}

} // namespace

void add_import_command(CLI::App& app, int& exit_status) {
    const auto options = std::make_shared<jobs::ImportOptions>();
    CLI::App* command = app.add_subcommand("import", "Lay two folders of localised lines out, pair by pair");
    command->add_option("subject", options->subject, "Folder of the lines to be worked on, with all below it")
        ->required()
        ->type_name("SUBJECT");
    command->add_option("base", options->base, "Folder of the lines that they are held against")
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
