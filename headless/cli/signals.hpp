#pragma once
// Signal handling of commands that write files.

#include "headless/base/failure.hpp"

#include <string>

namespace headless::cli {

/// From now on SIGINT, SIGTERM and SIGHUP are recorded (headless/base/interruption.hpp), and if the reader of
/// the standard output exits, only the output ends, not the program.
void watch_signals();

/// Reports which signal came, and what became of the work.
/// @returns the exit status for it, as in shells: 128 plus the signal's number
int print_interruption(const std::string& outcome);

/// Reports why a command ended early: a failure, or a signal.
/// @returns the exit status for it
int print_early_end(const Failure& failure);

} // namespace headless::cli
