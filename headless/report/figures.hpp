#pragma once
// The format of numbers in all reports. For use inside this folder.

#include <nlohmann/json.hpp>

#include <array>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string>

namespace headless::figures {

/// As snprintf, truncated to 159 characters. The program never sets a locale, so decimals have a point.
template <class... Values>
std::string formatted(const char* format, Values... values) {
    std::array<char, 160> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

/// One decimal; "-" for an empty value.
inline std::string loudness_text(std::optional<double> lufs) { return lufs ? formatted("%.1f", *lufs) : "-"; }

/// Decibels with four decimals: more would be rounding noise that nobody hears.
inline nlohmann::ordered_json decibels(std::optional<double> value) {
    return value && std::isfinite(*value) ? nlohmann::ordered_json(std::round(*value * 1e4) / 1e4)
                                          : nlohmann::ordered_json(nullptr);
}

/// One line and a line break. Bytes that are not UTF-8 become U+FFFD.
inline std::string line_of(const nlohmann::ordered_json& object) {
    return object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

} // namespace headless::figures
