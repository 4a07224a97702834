#pragma once
// `felspar import`: places two folders of localised lines in a project, pair by pair.

namespace CLI {
class App;
}

namespace headless::cli {

/// Adds the subcommand to `app`. When called, it does its work and sets `exit_status`: 0 for success, 1
/// otherwise.
void add_import_command(CLI::App& app, int& exit_status);

} // namespace headless::cli
