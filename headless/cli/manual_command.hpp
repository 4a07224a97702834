#pragma once
// `felspar completion` and `felspar manual`: the command's own description for shells and for man.

namespace CLI {
class App;
} // namespace CLI

namespace headless::cli {

/// Adds both subcommands to `app`, which they describe with all that it has when they run. `exit_status`
/// becomes 1 if standard output cannot be written.
void add_manual_commands(CLI::App& app, int& exit_status);

} // namespace headless::cli
