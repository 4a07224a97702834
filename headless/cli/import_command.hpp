#pragma once
// `felspar import`: lays two folders of localised lines out in a project, pair by pair.

namespace CLI {
class App;
}

namespace headless {

/// Adds the subcommand to `app`. When it is called it does its work and sets `exit_status`: 0 all done, 1
/// not.
void add_import_command(CLI::App& app, int& exit_status);

} // namespace headless
