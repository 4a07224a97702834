#include "headless/cli/run_command.hpp"

#include "headless/base/interruption.hpp"
#include "headless/cli/check_scripts.hpp"
#include "headless/cli/messages.hpp"
#include "headless/cli/path_option.hpp"
#include "headless/cli/plugin_location.hpp"
#include "headless/cli/signals.hpp"
#include "headless/functions/all_functions.hpp"
#include "headless/jobs/project_output.hpp"
#include "headless/report/printable.hpp"
#include "headless/report/remarks.hpp"
#include "headless/rpp/rpp.hpp"
#include "headless/script/script_runner.hpp"
#include "headless/workstation/workstation.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace headless::cli {
namespace {

struct RunOptions {
    script::ScriptRequest script;
    std::filesystem::path project; ///< empty: a new one
    std::filesystem::path save;    ///< empty: nothing is saved
    std::filesystem::path plugin;  ///< empty: where it was built or installed
    std::vector<std::string> dialogs;
    bool accepts_losses = false;
    bool checks = false; ///< does not run the script, nor those among its arguments
    bool json = false;
};

Result<void> check_save(const RunOptions& options) {
    if (options.save.empty())
        return {};
    const std::vector<std::filesystem::path> inputs{options.script.file};
    return jobs::check_project_output(jobs::OutputGuard(inputs), options.save, options.project);
}

/// Relative folders are relative to the folder where the project lies, or will lie.
Result<void> open_project(const RunOptions& options, workstation::Workstation& workstation) {
    project::Project& project = workstation.project();
    if (options.project.empty()) {
        project.file = options.save.empty() ? "" : jobs::true_path(options.save);
        return {};
    }
    return rpp::load_project(project, options.project).map([&] {
        project.file = jobs::true_path(options.project);
    });
}

void add_answers(const RunOptions& options, workstation::DialogAnswers& answers) {
    for (const std::string& dialog : options.dialogs) {
        const std::size_t equals = dialog.find('=');
        answers.add(dialog.substr(0, equals), dialog.substr(equals + 1));
    }
}

/// Prints line by line, so that an error's traceback stays readable. Indents become blanks.
void print_script_error(std::string_view error) {
    while (!error.empty()) {
        const std::size_t end = std::min(error.find('\n'), error.size());
        std::string_view line = error.substr(0, end);
        const bool is_indented = line.starts_with('\t');
        line.remove_prefix(is_indented ? 1 : 0);
        std::cerr << (is_indented ? "    " : "") << report::printable(line) << '\n';
        error.remove_prefix(std::min(end + 1, error.size()));
    }
}

/// @returns whether there were any
bool print_errors(const std::vector<Failure>& failures) {
    for (const Failure& failure : failures)
        print_error(failure.message);
    return !failures.empty();
}

/// Tells of the backup and of losses.
Result<void> save(const RunOptions& options, const std::filesystem::path& target,
                  workstation::Workstation& workstation) {
    const auto losses = options.accepts_losses ? jobs::Losses::accept : jobs::Losses::refuse;
    return jobs::save_project_as(workstation, target, losses)
        .and_then([&](const jobs::SavedProject& saved) -> Result<void> {
            if (!saved.backup.empty())
                print_error(report::backup_message(target, saved.backup));
            print_errors(saved.losses);
            if (!saved.is_written)
                return tl::unexpected(jobs::refusal_of(target, saved.losses.size()));
            return {};
        });
}

/// Where a script's own request to save goes.
Result<void> save_for_script(const RunOptions& options, workstation::Workstation& workstation) {
    const std::filesystem::path& target = options.save.empty() ? options.project : options.save;
    if (target.empty())
        return tl::unexpected(
            Failure{"the script wants to save a project that has no file; --save names one"});
    const std::vector<std::filesystem::path> inputs{options.script.file};
    if (auto permitted = jobs::check_project_output(jobs::OutputGuard(inputs), target, options.project);
        !permitted)
        return permitted;
    return save(options, target, workstation);
}

/// The script may not have noticed failures, as many functions cannot report them.
/// @returns whether everything was done and saved
bool finish(const RunOptions& options, workstation::Workstation& workstation,
            const script::ScriptOutcome& outcome, bool& is_saved) {
    print_script_error(outcome.error);
    const bool is_to_be_saved = outcome.status == 0 && !options.save.empty();
    const auto saved = is_to_be_saved ? save(options, options.save, workstation) : Result<void>();
    is_saved = is_to_be_saved && saved;
    const bool failed = print_errors(workstation.take_failures());
    if (!saved)
        print_error(saved.error().message);
    for (const std::string& name : outcome.asked_for)
        print_error("the script asked for " + name + ", which the headless workstation does not have");
    for (const std::string& title : workstation.dialog_answers.never_asked())
        print_error("no dialog \"" + title + "\" has come");
    return outcome.status == 0 && !failed && saved;
}

int run_and_save(const RunOptions& options, workstation::Workstation& workstation,
                 const workstation::PluginLibrary& plugin) {
    bool is_done = false;
    bool is_saved = false;
    const script::ScriptOutcome outcome =
        script::run_script(workstation, plugin, options.script, [&](const script::ScriptOutcome& ended) {
            is_done = finish(options, workstation, ended, is_saved);
        });
    const bool failed = print_errors(workstation.take_failures()); // from finalizers
    const bool is_told = finish_output();
    if (interruption::signal_number() != 0)
        return print_interruption(is_saved ? "the project was saved" : "nothing was saved");
    return outcome.status != 0 ? outcome.status : is_done && !failed && is_told ? 0 : 1;
}

int check(const RunOptions& options) {
    std::vector<std::filesystem::path> scripts{options.script.file};
    scripts.insert(scripts.end(), options.script.arguments.begin(), options.script.arguments.end());
    workstation::Workstation workstation{functions::all_functions()};
    const auto plugin = load_plugin(options.plugin, workstation);
    if (!plugin)
        return cannot_begin(plugin.error());
    return check_scripts(workstation, scripts, options.json ? CheckForm::json : CheckForm::text);
}

int run(const RunOptions& options) {
    if (options.checks)
        return check(options);
    watch_signals();
    if (const auto permitted = check_save(options); !permitted)
        return cannot_begin(permitted.error());
    workstation::Workstation workstation{functions::all_functions()};
    const auto plugin = load_plugin(options.plugin, workstation);
    if (!plugin)
        return cannot_begin(plugin.error());
    if (const auto opened = open_project(options, workstation); !opened)
        return cannot_begin(opened.error());
    add_answers(options, workstation.dialog_answers);
    workstation.save_project = [&] { return save_for_script(options, workstation); };
    return run_and_save(options, workstation, *plugin);
}

std::string check_answer(const std::string& dialog) {
    const std::size_t equals = dialog.find('=');
    return equals == std::string::npos || equals == 0 ? dialog + " is not TITLE=ANSWER" : "";
}

} // namespace

void add_run_command(CLI::App& app, int& exit_status) {
    const auto options = std::make_shared<RunOptions>();
    CLI::App* run_app = app.add_subcommand("run", "Run a Lua script that was written for the workstation");
    add_path_option(*run_app, "script", options->script.file, "The script")
        ->required()
        ->check(existing_file())
        ->type_name("SCRIPT.lua");
    run_app
        ->add_option("arguments", options->script.arguments,
                     "The script's arguments, behind --; with --check more scripts")
        ->type_name("ARGS");
    add_path_option(*run_app, "--project", options->project, "Open this project first (default: a new one)")
        ->type_name("IN.rpp");
    add_path_option(*run_app, "--save", options->save,
                    "Save the project here when the script has ended without error")
        ->type_name("OUT.rpp");
    add_losses_option(*run_app, options->accepts_losses);
    run_app
        ->add_option("--dialog", options->dialogs,
                     "Answer the dialog of that title: with a button, or with the values of its form; may be "
                     "repeated")
        ->check(CLI::Validator(check_answer, ""))
        ->type_name("TITLE=ANSWER")
        ->allow_extra_args(false);
    auto* check = run_app->add_flag(
        "--check", options->checks,
        "Run nothing: list the functions, keys and commands that the given scripts would miss here");
    for (const char* option : {"--project", "--save", "--dialog"})
        check->excludes(option);
    run_app->add_flag("--json", options->json, "List them as JSON, one object for each script")->needs(check);
    add_plugin_option(*run_app, options->plugin);
    run_app->callback([options, &exit_status] { exit_status = run(*options); });
}

} // namespace headless::cli
