// The command `felspar`: the headless workstation with a command line.

#include "headless/cli/ride_command.hpp"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>

int main(int argc, char** argv) {
    try {
        CLI::App app{"A small audio workstation without a screen, for dialogue.", "felspar"};
        app.set_version_flag("--version", "felspar " FELSPAR_VERSION);
        app.require_subcommand(1);
        int exit_status = 0;
        headless::add_ride_command(app, exit_status);
        CLI11_PARSE(app, argc, argv);
        return exit_status;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "felspar: %s\n", error.what());
        return 1;
    }
}
