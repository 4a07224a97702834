#pragma once
// What a command of the shell prints and how it ends.

#include <optional>
#include <string>

namespace shell {

struct Answer {
    std::string first_word; ///< of the output, up to 63 bytes
    int status = 0;         ///< as `pclose` returns it
};

/// Runs a command and waits for it to end. Returns nothing if the shell could not be started.
std::optional<Answer> ask(const std::string& command);

} // namespace shell
