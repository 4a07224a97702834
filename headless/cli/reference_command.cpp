#include "headless/cli/reference_command.hpp"

#include "headless/cli/messages.hpp"
#include "headless/cli/plugin_location.hpp"
#include "headless/functions/all_functions.hpp"
#include "headless/reference/forms.hpp"
#include "headless/workstation/workstation.hpp"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <string>

namespace headless::cli {
namespace {

const std::map<std::string, std::string (*)(const reference::Catalogue&)> forms{
    {"text", reference::text_form},
    {"markdown", reference::markdown_form},
    {"html", reference::html_form},
    {"luals", reference::luals_form},
    {"python", reference::python_form}};

struct ReferenceOptions {
    std::string form = "text";
    std::filesystem::path plugin; ///< empty: where it was built or installed
};

int run(const ReferenceOptions& options) {
    workstation::Workstation workstation{functions::all_functions()};
    const auto plugin = load_plugin(options.plugin, workstation);
    if (!plugin)
        return cannot_begin(plugin.error());
    std::cout << forms.at(options.form)(reference::read_catalogue(workstation, *plugin));
    return finish_output() ? 0 : 1;
}

} // namespace

void add_reference_command(CLI::App& app, int& exit_status) {
    const auto options = std::make_shared<ReferenceOptions>();
    CLI::App* command = app.add_subcommand("api", "Print every function that scripts may call");
    command->add_option("--format", options->form, "How it is printed (default: text)")
        ->check(CLI::IsMember(forms).description(""))
        ->type_name("text|markdown|html|luals|python");
    add_plugin_option(*command, options->plugin);
    command->callback([options, &exit_status] { exit_status = run(*options); });
}

} // namespace headless::cli
