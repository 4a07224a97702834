#pragma once
// What the command says beside its results, on standard error.

#include "headless/base/failure.hpp"

#include <string_view>

namespace headless {

/// One line; what cannot be printed is made visible.
void tell(std::string_view message);

/// Tells why there is no run at all. @returns the exit status for it
int cannot_begin(const Failure& failure);

} // namespace headless
