#include "headless/cli/signals.hpp"

#include "headless/base/interruption.hpp"
#include "headless/cli/messages.hpp"
#include "headless/system/signals.hpp"

namespace headless::cli {

void watch_signals() {
    interruption::watch();
    system::ignore_closed_pipes();
}

int print_interruption(const std::string& outcome) {
    const int number = interruption::signal_number();
    print_error("interrupted by " + system::signal_name(number) + ": " + outcome);
    return 128 + number;
}

int print_early_end(const Failure& failure) {
    return failure.kind == FailureKind::interrupted ? print_interruption(failure.message)
                                                    : cannot_begin(failure);
}

} // namespace headless::cli
