#pragma once
// `felspar api`: prints the reference of what scripts may call.

namespace CLI {
class App;
}

namespace headless::cli {

/// Adds the subcommand to `app`. When called, it does its work and sets `exit_status`: 0 for success, 1
/// otherwise.
void add_reference_command(CLI::App& app, int& exit_status);

} // namespace headless::cli
