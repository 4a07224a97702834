#pragma once
// `felspar install` and `felspar uninstall`.

namespace CLI {
class App;
}

namespace headless::cli {

/// Adds both commands. Their callbacks set `exit_status`, which must outlive the parsing.
void add_install_commands(CLI::App& app, int& exit_status);

} // namespace headless::cli
