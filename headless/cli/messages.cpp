#include "headless/cli/messages.hpp"

#include "headless/report/printable.hpp"

#include <iostream>

namespace headless {

void tell(std::string_view message) { std::cerr << "felspar: " << printable(message) << std::endl; }

int cannot_begin(const Failure& failure) {
    tell(failure.message);
    return 1;
}

} // namespace headless
