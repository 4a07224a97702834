#include "headless/cli/signals.hpp"

#include "headless/base/interruption.hpp"
#include "headless/cli/messages.hpp"

#include <csignal>
#include <cstring>

namespace headless::cli {

void watch_signals() {
    interruption::watch();
    std::signal(SIGPIPE, SIG_IGN);
}

int print_interruption(const std::string& outcome) {
    const int number = interruption::signal_number();
    print_error(std::string("interrupted by SIG") + sigabbrev_np(number) + ": " + outcome);
    return 128 + number;
}

} // namespace headless::cli
