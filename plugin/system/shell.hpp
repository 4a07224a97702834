#pragma once
// Commands of the system's shell.

#include <string>

namespace shell {

/// Runs a command, in UTF-8, and waits for it to end. Its output is dropped.
/// @returns whether the shell could be started
bool run(const std::string& command);

} // namespace shell
