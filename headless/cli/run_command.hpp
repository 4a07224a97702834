#pragma once
// `felspar run`: runs a Lua script that was written for the workstation.

namespace CLI {
class App;
}

namespace headless {

/// Adds the subcommand to `app`. When it is called it does its work and sets `exit_status`: 0 all done, 1
/// not, or what the script left with.
void add_run_command(CLI::App& app, int& exit_status);

} // namespace headless
