#pragma once
// Reads decimal numbers, in every locale.

#include <optional>
#include <string_view>

namespace headless {

struct DecimalReading {
    double value = 0.0;
    std::string_view rest{}; ///< what stands behind the number
};

/// The number at the beginning of a text, correctly rounded: std::from_chars, which not every standard
/// library has for doubles.
/// @returns nothing if there is none, or none that a double can hold without becoming infinite or 0
std::optional<DecimalReading> read_decimal(std::string_view text);

} // namespace headless
