#pragma once
// The host's colour values. The lower bytes hold red, green and blue in an order that depends on the
// platform.

/// Marks a native colour as a custom colour in use, including black.
inline constexpr int color_in_use = 0x1000000;

/// Returns 0, which is no colour, for a colour without the flag.
constexpr int used_color(int color) { return (color & color_in_use) != 0 ? color : 0; }

/// How project files name the order of a native colour's bytes: by the lowest, which is red.
inline constexpr const char* native_byte_order = "R";

/// The colour with red and blue exchanged.
constexpr int with_swapped_bytes(int color) {
    return (color & ~0xFF00FF) | ((color & 0xFF) << 16) | ((color >> 16) & 0xFF);
}
