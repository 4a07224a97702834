#include "headless/cli/reference_command.hpp"

#include "headless/cli/plugin_location.hpp"
#include "headless/cli/project_output.hpp"
#include "headless/host/plugin_library.hpp"
#include "headless/host/workstation.hpp"
#include "headless/script/reference.hpp"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

namespace headless {
namespace {

struct ReferenceOptions {
    ReferenceForm form = ReferenceForm::text;
    std::filesystem::path plugin; ///< empty: where it was built or installed
};

int run(const ReferenceOptions& options) {
    Workstation workstation;
    const auto plugin = find_plugin(options.plugin).and_then([&](const std::filesystem::path& file) {
        return PluginLibrary::load(file, workstation);
    });
    if (!plugin)
        return cannot_begin(plugin.error());
    std::cout << api_reference(workstation.script_functions(), options.form) << std::flush;
    return std::cout ? 0 : 1;
}

} // namespace

void add_reference_command(CLI::App& app, int& exit_status) {
    const auto options = std::make_shared<ReferenceOptions>();
    CLI::App* command = app.add_subcommand("api", "Print every function that scripts may call");
    const auto set_form = [options](const std::string& word) {
        options->form = word == "markdown" ? ReferenceForm::markdown : ReferenceForm::text;
    };
    command->add_option_function<std::string>("--format", set_form, "text (default) or markdown")
        ->check(CLI::IsMember({"text", "markdown"}).description(""))
        ->type_name("text|markdown");
    command
        ->add_option("--plugin", options->plugin, "The plug-in's library, when it is not in its usual place")
        ->type_name("PATH");
    command->callback([options, &exit_status] { exit_status = run(*options); });
}

} // namespace headless
