#pragma once
// The host's colour values, whose lower bytes are red, green and blue in an order of the platform's.

/// Marks a native colour as a custom colour in use, black among them.
inline constexpr int color_in_use = 0x1000000;
