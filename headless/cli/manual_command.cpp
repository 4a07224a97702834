#include "headless/cli/manual_command.hpp"

#include "headless/cli/messages.hpp"
#include "headless/manual/forms.hpp"

#include <CLI/CLI.hpp>

#include <iostream>
#include <map>
#include <memory>
#include <string>

namespace headless::cli {
namespace {

const std::map<std::string, std::string (*)(const manual::Command&)> completions{
    {"bash", manual::bash_completion}, {"fish", manual::fish_completion}, {"zsh", manual::zsh_completion}};

} // namespace

void add_manual_commands(CLI::App& app, int& exit_status) {
    const auto shell = std::make_shared<std::string>();
    CLI::App* completion = app.add_subcommand("completion", "Print a completion script for a shell");
    completion->add_option("shell", *shell, "The shell that reads it")
        ->required()
        ->check(CLI::IsMember(completions).description(""))
        ->type_name("bash|zsh|fish");
    completion->callback([&app, &exit_status, shell] {
        std::cout << completions.at(*shell)(manual::outline_of(app));
        exit_status = finish_output() ? 0 : 1;
    });
    app.add_subcommand("manual", "Print the manual page, for man -l -")->callback([&app, &exit_status] {
        std::cout << manual::manual_page(manual::outline_of(app), FELSPAR_VERSION);
        exit_status = finish_output() ? 0 : 1;
    });
}

} // namespace headless::cli
