#pragma once
// The command's manual page and completions, from its outline. All end with a line break.

#include "headless/manual/outline.hpp"

#include <string>

namespace headless::manual {

/// A page for man(1) in the macros of man(7).
std::string manual_page(const Command& command, const std::string& version);

// Scripts that a shell reads at its start, or when the command is first completed.
std::string bash_completion(const Command& command);
std::string zsh_completion(const Command& command);
std::string fish_completion(const Command& command);

} // namespace headless::manual
