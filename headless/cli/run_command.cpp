#include "headless/cli/run_command.hpp"

#include "headless/cli/messages.hpp"
#include "headless/cli/plugin_location.hpp"
#include "headless/host/workstation.hpp"
#include "headless/output/project_output.hpp"
#include "headless/report/printable.hpp"
#include "headless/rpp/rpp.hpp"
#include "headless/script/script_runner.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace headless {
namespace {

struct RunOptions {
    ScriptRequest script;
    std::filesystem::path project; ///< empty: a new one
    std::filesystem::path save;    ///< empty: nothing is saved
    std::filesystem::path plugin;  ///< empty: where it was built or installed
    std::vector<std::string> dialogs;
};

Result<void> check_save(const RunOptions& options) {
    if (options.save.empty())
        return {};
    const std::vector<std::filesystem::path> inputs{options.script.file};
    return check_project_output(OutputGuard(inputs), options.save, options.project);
}

/// Relative folders are seen from where the project lies, or will lie.
Result<void> open_project(const RunOptions& options, Workstation& workstation) {
    Project& project = workstation.project();
    if (options.project.empty()) {
        project.file = options.save.empty() ? "" : with_true_folder(options.save);
        return {};
    }
    return load_project(project, options.project).map([&] {
        project.file = with_true_folder(options.project);
    });
}

void add_answers(const RunOptions& options, DialogAnswers& answers) {
    for (const std::string& dialog : options.dialogs) {
        const std::size_t equals = dialog.find('=');
        answers.add(dialog.substr(0, equals), dialog.substr(equals + 1));
    }
}

/// Line by line, so that an error's traceback stays readable; indents become blanks.
void tell_error(std::string_view error) {
    while (!error.empty()) {
        const std::size_t end = std::min(error.find('\n'), error.size());
        std::string_view line = error.substr(0, end);
        const bool is_indented = line.starts_with('\t');
        line.remove_prefix(is_indented ? 1 : 0);
        std::cerr << (is_indented ? "    " : "") << printable(line) << '\n';
        error.remove_prefix(std::min(end + 1, error.size()));
    }
}

/// What the script could not do may have been lost on it, as many functions have no result to tell it by.
bool tell_failures(Workstation& workstation, const std::vector<Failure>& more) {
    std::vector<Failure> failures = workstation.take_failures();
    failures.insert(failures.end(), more.begin(), more.end());
    for (const Failure& failure : failures)
        tell(failure.message);
    for (const std::string& title : workstation.dialog_answers.never_asked())
        tell("no dialog \"" + title + "\" has come");
    return !failures.empty();
}

Result<std::vector<Failure>> save(const RunOptions& options, Workstation& workstation) {
    if (options.save.empty())
        return {};
    return keep_foreign_original(options.save).and_then([&](const std::string& kept) {
        if (!kept.empty())
            tell(kept);
        return save_project_as(workstation, options.save);
    });
}

int run_and_save(const RunOptions& options, Workstation& workstation, const PluginLibrary& plugin) {
    const ScriptOutcome outcome = run_script(workstation, plugin, options.script);
    tell_error(outcome.error);
    std::vector<Failure> losses;
    if (outcome.status == 0) {
        const auto saved = save(options, workstation);
        losses = saved ? *saved : std::vector{saved.error()};
    }
    const bool failed = tell_failures(workstation, losses);
    const bool is_told = std::fflush(stdout) == 0 && std::cout.flush() && std::ferror(stdout) == 0;
    return outcome.status == 0 && (failed || !is_told) ? 1 : outcome.status;
}

int run(const RunOptions& options) {
    if (const auto permitted = check_save(options); !permitted)
        return cannot_begin(permitted.error());
    Workstation workstation;
    const auto plugin = load_plugin(options.plugin, workstation);
    if (!plugin)
        return cannot_begin(plugin.error());
    if (const auto opened = open_project(options, workstation); !opened)
        return cannot_begin(opened.error());
    add_answers(options, workstation.dialog_answers);
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
    run_app->add_option("script", options->script.file, "The script")
        ->required()
        ->check(CLI::ExistingFile.description(""))
        ->type_name("SCRIPT.lua");
    run_app->add_option("arguments", options->script.arguments, "The script's arguments, behind --")
        ->type_name("ARGS");
    run_app->add_option("--project", options->project, "Open this project first (default: a new one)")
        ->type_name("IN.rpp");
    run_app
        ->add_option("--save", options->save, "Save the project here when the script has ended without error")
        ->type_name("OUT.rpp");
    run_app
        ->add_option("--dialog", options->dialogs,
                     "Answer the dialog of that title: with a button, or with the values of its form; may be "
                     "repeated")
        ->check(CLI::Validator(check_answer, ""))
        ->type_name("TITLE=ANSWER")
        ->allow_extra_args(false);
    add_plugin_option(*run_app, options->plugin);
    run_app->callback([options, &exit_status] { exit_status = run(*options); });
}

} // namespace headless
