#pragma once
// Signals that ask the program to end.

#include <string>

namespace headless::system {

/// From now on the first SIGINT, SIGTERM or SIGHUP calls `react` with its number, and a second one ends the
/// program at once, as it would by default. A signal that is ignored, as under nohup, stays ignored.
/// @param react  runs as a signal handler on the thread that made this call; on Windows, where closing the
///               console counts as SIGTERM, on a thread of its own
void watch_termination(void (*react)(int number));

/// If the reader of the standard output exits, only the output ends, not the program.
void ignore_closed_pipes();

/// "SIGINT".
std::string signal_name(int number);

} // namespace headless::system
