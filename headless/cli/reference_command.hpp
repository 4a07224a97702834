#pragma once
// `felspar api`: prints the reference of what scripts may call.

namespace CLI {
class App;
}

namespace headless {

/// Adds the subcommand to `app`. When it is called it does its work and sets `exit_status`: 0 all done, 1
/// not.
void add_reference_command(CLI::App& app, int& exit_status);

} // namespace headless
