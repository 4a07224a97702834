#include "headless/cli/reference_command.hpp"

#include "headless/cli/messages.hpp"
#include "headless/cli/plugin_location.hpp"
#include "headless/host/workstation.hpp"
#include "headless/reference/forms.hpp"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <map>
#include <memory>
#include <string>

namespace headless {
namespace {

const std::map<std::string, std::string (*)(const Catalogue&)> forms{{"text", text_form},
                                                                     {"markdown", markdown_form},
                                                                     {"html", html_form},
                                                                     {"luals", luals_form},
                                                                     {"python", python_form}};

struct ReferenceOptions {
    std::string form = "text";
    std::filesystem::path plugin; ///< empty: where it was built or installed
};

int run(const ReferenceOptions& options) {
    Workstation workstation;
    const auto plugin = load_plugin(options.plugin, workstation);
    if (!plugin)
        return cannot_begin(plugin.error());
    std::cout << forms.at(options.form)(read_catalogue(workstation, *plugin)) << std::flush;
    return std::cout ? 0 : 1;
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

} // namespace headless
