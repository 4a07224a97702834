#pragma once
// `felspar project`: says what project files hold.

namespace CLI {
class App;
}

namespace headless::cli {

/// Adds the subcommand to `app`. When called, it sets `exit_status`: 0 for success, 1 if a project cannot be read, or
/// if a check finds that media is missing.
void add_project_command(CLI::App& app, int& exit_status);

} // namespace headless::cli
