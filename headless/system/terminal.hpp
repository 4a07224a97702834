#pragma once
// The standard streams as terminals.

#include <cstddef>

namespace headless::system {

inline constexpr int standard_input = 0;
inline constexpr int standard_error = 2;

bool is_terminal(int descriptor);

/// The terminal's width; 0 if it is not known.
std::size_t columns_of(int descriptor);

} // namespace headless::system
