// The command `felspar`: the headless workstation with a command line.

#include "headless/cli/import_command.hpp"
#include "headless/cli/reference_command.hpp"
#include "headless/cli/ride_command.hpp"
#include "headless/cli/run_command.hpp"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>

namespace {

constexpr int usage_error = 2;

int run(int argc, char** argv) {
    CLI::App app{"A small audio workstation without a screen, for dialogue.", "felspar"};
    app.set_version_flag("--version", "felspar " FELSPAR_VERSION);
    app.require_subcommand(1);
    int exit_status = 0;
    headless::add_import_command(app, exit_status);
    headless::add_ride_command(app, exit_status);
    headless::add_run_command(app, exit_status);
    headless::add_reference_command(app, exit_status);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : usage_error;
    }
    return exit_status;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "felspar: %s\n", error.what());
        return 1;
    }
}
