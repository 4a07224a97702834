#include "headless/cli/messages.hpp"

#include "headless/report/printable.hpp"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>

namespace headless::cli {

void print_error(std::string_view message) {
    std::cerr << "felspar: " << report::printable(message) << std::endl;
}

void add_losses_option(CLI::App& command, bool& accepts_losses) {
    command.add_flag("--accept-losses", accepts_losses,
                     "Write the project even if it cannot hold some names or paths as they are");
}

bool finish_output() {
    const bool is_whole = std::fflush(stdout) == 0 && std::cout.flush() && std::ferror(stdout) == 0;
    if (!is_whole)
        print_error("the standard output could not be written to its end");
    return is_whole;
}

int cannot_begin(const Failure& failure) {
    print_error(failure.message);
    return 1;
}

} // namespace headless::cli
