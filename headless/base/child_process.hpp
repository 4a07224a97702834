#pragma once
// Runs another program and takes what it prints.

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// The words of a command line: blanks separate them, except between single or double quotes.
std::vector<std::string> command_words(std::string_view command_line);

struct ProcessResult {
    int status = 0;       ///< exit status, or 128 and the number of the signal that ended it
    std::string output{}; ///< standard output
};

/// Runs the program until it ends.
/// @param words      the program, looked up in PATH, and its arguments
/// @param time_limit after that the program is ended; empty: none
/// @returns nothing if it cannot be started, was ended for its time, or a signal asks this process to end
std::optional<ProcessResult> run_process(const std::vector<std::string>& words,
                                         std::optional<std::chrono::milliseconds> time_limit);

/// Starts the program and leaves it to itself. @returns whether it was started
bool start_process(const std::vector<std::string>& words);

} // namespace headless
