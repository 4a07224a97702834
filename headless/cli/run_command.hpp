#pragma once
// `felspar run`: runs a Lua script that was written for the workstation.

namespace CLI {
class App;
}

namespace headless::cli {

/// Adds the subcommand to `app`. When called, it does its work and sets `exit_status`: 0 for success, 1
/// otherwise, or the status that the script exited with.
void add_run_command(CLI::App& app, int& exit_status);

} // namespace headless::cli
