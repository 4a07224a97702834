#pragma once
// The host's colour values. The lower bytes hold red, green and blue in an order that depends on the
// platform.

/// Marks a native colour as a custom colour in use, including black.
inline constexpr int color_in_use = 0x1000000;

/// Returns 0, which is no colour, for a colour without the flag.
constexpr int used_color(int color) { return (color & color_in_use) != 0 ? color : 0; }

/// What project files of this platform say about that order.
inline constexpr const char* color_byte_order = "B";
