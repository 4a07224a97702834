// The command `felspar`: the headless workstation with a command line.

#include "headless/cli/import_command.hpp"
#include "headless/cli/install_command.hpp"
#include "headless/cli/manual_command.hpp"
#include "headless/cli/project_command.hpp"
#include "headless/cli/reference_command.hpp"
#include "headless/cli/ride_command.hpp"
#include "headless/cli/run_command.hpp"
#include "headless/report/printable.hpp"
#include "headless/system/program.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int usage_error = 2;

/// The message repeats arguments, which may hold any bytes.
std::string usage_message(const CLI::App* app, const CLI::Error& error) {
    const CLI::Error visible(error.get_name(), headless::report::printable(error.what()),
                             error.get_exit_code());
    return CLI::FailureMessage::simple(app, visible);
}

int run(std::vector<std::string> arguments) {
    CLI::App app{"A small audio workstation without a screen, for dialogue.", "felspar"};
    app.set_version_flag("--version", "felspar " FELSPAR_VERSION);
    app.allow_windows_style_options(false); // a word that begins with a slash is a path
    app.require_subcommand(1);
    app.failure_message(usage_message);
    int exit_status = 0;
    headless::cli::add_import_command(app, exit_status);
    headless::cli::add_ride_command(app, exit_status);
    headless::cli::add_run_command(app, exit_status);
    headless::cli::add_project_command(app, exit_status);
    headless::cli::add_reference_command(app, exit_status);
    headless::cli::add_install_commands(app, exit_status);
    headless::cli::add_manual_commands(app, exit_status);
    try {
        std::ranges::reverse(arguments); // as the parser takes them
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : usage_error;
    }
    return exit_status;
}

} // namespace

int main(int argc, char** argv) {
    try {
        headless::system::use_utf8_streams();
        return run(headless::system::arguments(argc, argv));
    } catch (const std::bad_alloc&) {
        std::fputs("felspar: out of memory\n", stderr);
        return 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "felspar: %s\n", error.what());
        return 1;
    }
}
