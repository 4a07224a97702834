#include "headless/cli/install_command.hpp"

#include "headless/cli/messages.hpp"
#include "headless/cli/path_option.hpp"
#include "headless/cli/plugin_location.hpp"
#include "headless/cli/signals.hpp"
#include "headless/install/installation.hpp"
#include "headless/install/workstation_folder.hpp"
#include "headless/report/ride_report.hpp"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <memory>
#include <utility>
#include <vector>

namespace headless::cli {
namespace {

struct InstallOptions {
    std::filesystem::path resource_folder; ///< empty: in its usual place
    std::filesystem::path plugin;          ///< to install; empty: where it was built or installed
    install::Options what;
    bool removes = false;
    bool json = false;
};

Result<std::vector<report::InstalledFile>> carry_out(const InstallOptions& options,
                                                     const std::filesystem::path& folder) {
    if (options.removes)
        return install::uninstall(folder, options.what);
    return find_plugin(options.plugin)
        .and_then([](const auto& plugin) { return install::find_package(plugin, this_platform()); })
        .and_then([&](const auto& package) { return install::install(package, folder, options.what); });
}

int print_failure(const InstallOptions& options, const Failure& failure) {
    if (options.json)
        std::cout << report::json_failure_line(failure.path, failure.message) << std::flush;
    return print_early_end(failure);
}

int run(const InstallOptions& options) {
    watch_signals();
    auto folder =
        install::choose_resource_folder(options.resource_folder, this_platform(), process_environment);
    if (!folder)
        return print_failure(options, folder.error());
    auto files = carry_out(options, folder->path);
    if (!files)
        return print_failure(options, files.error());
    const report::InstallReport report{.folder = folder->path,
                                       .others = folder->others,
                                       .version = folder->version,
                                       .sws = folder->sws,
                                       .files = std::move(*files),
                                       .is_removal = options.removes,
                                       .is_dry_run = options.what.is_dry_run};
    std::cout << (options.json ? report::json_of(report) : report::text_of(report));
    return finish_output() && !report.kept_something() ? 0 : 1;
}

std::shared_ptr<InstallOptions> add_command(CLI::App& app, int& exit_status, const char* name,
                                            const char* help) {
    auto options = std::make_shared<InstallOptions>();
    CLI::App* command = app.add_subcommand(name, help);
    add_path_option(*command, "--resource-path", options->resource_folder,
                    "The workstation's resource folder, when it is not in its usual place")
        ->type_name("FOLDER");
    command->add_flag("--dry-run", options->what.is_dry_run, "Only show what would be done");
    command->add_flag("--json", options->json, "Print one JSON object");
    command->callback([options, &exit_status] { exit_status = run(*options); });
    return options;
}

} // namespace

void add_install_commands(CLI::App& app, int& exit_status) {
    const auto installs =
        add_command(app, exit_status, "install", "Install the library and its scripts into the workstation");
    CLI::App& install = *app.get_subcommand("install");
    add_plugin_option(install, installs->plugin);
    install.add_flag(
        "--replace", installs->what.replaces,
        "Also install in place of files that are not ours or were changed; they are moved aside");
    add_command(app, exit_status, "uninstall", "Remove what was installed into the workstation")->removes =
        true;
}

} // namespace headless::cli
