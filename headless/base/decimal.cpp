#include "headless/base/decimal.hpp"

#include <cmath>
#include <fast_float/fast_float.h>

namespace headless {
namespace {

/// Whether the digits before the exponent are all zeros.
bool is_zero(std::string_view number) {
    const std::string_view digits = number.substr(0, number.find_first_of("eE"));
    return digits.find_first_not_of("-.0") == std::string_view::npos;
}

bool is_named(std::string_view number) { return number.find_first_of("iInN") != std::string_view::npos; }

} // namespace

std::optional<DecimalReading> read_decimal(std::string_view text) {
    double value = 0.0;
    const auto [end, error] = fast_float::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc())
        return std::nullopt;
    const std::string_view number(text.data(), static_cast<std::size_t>(end - text.data()));
    if ((std::isinf(value) && !is_named(number)) || (value == 0.0 && !is_zero(number)))
        return std::nullopt;
    return DecimalReading{value, text.substr(number.size())};
}

} // namespace headless
