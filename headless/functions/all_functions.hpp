#pragma once
// Every function of the headless host.

#include "headless/workstation/host_function.hpp"

#include <span>

namespace headless::functions {

/// Grouped by family. The span is valid for the whole run of the program.
std::span<const workstation::HostFunction> all_functions();

} // namespace headless::functions
