#pragma once
// Messages of the command on standard error, besides its results.

#include "headless/base/failure.hpp"

#include <string_view>

namespace CLI {
class App;
}

namespace headless::cli {

/// Prints one line; characters that cannot be printed are made visible.
void print_error(std::string_view message);

/// Adds the switch of commands that save projects.
void add_losses_option(CLI::App& command, bool& accepts_losses);

/// Flushes the standard output. Reports an error if not all of it was written.
/// @returns whether all of it was written
bool finish_output();

/// Reports why the command cannot run at all.
/// @returns the exit status for this case
int cannot_begin(const Failure& failure);

} // namespace headless::cli
