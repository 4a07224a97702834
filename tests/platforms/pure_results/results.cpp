#include "tests/platforms/pure_results/results.hpp"

#include <charconv>
#include <cmath>

namespace pure_results {
namespace {

template <class... Format>
std::string digits(double value, Format... format) {
    if (std::isnan(value)) // its sign depends on the processor
        return "nan";
    char text[64];
    return {text, std::to_chars(text, text + sizeof text, value, format...).ptr};
}

} // namespace

std::string shown(std::string_view text) {
    static constexpr char hex[] = "0123456789abcdef";
    std::string result = "\"";
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte >= ' ' && byte < 0x7f && character != '\\')
            result += character;
        else
            result.append("\\x") += {hex[byte / 16], hex[byte % 16]};
    }
    return result + "\"";
}

std::string shown(const std::vector<std::string>& texts) {
    std::string result = "[";
    for (const std::string& text : texts)
        result += shown(text);
    return result + "]";
}

std::string shown(double value) { return digits(value); }

std::string shown_rounded(double value) { return digits(value, std::chars_format::general, 12); }

std::uint32_t Numbers::next() {
    state_ = state_ * 6364136223846793005 + 1442695040888963407;
    return static_cast<std::uint32_t>(state_ >> 32);
}

std::size_t Numbers::below(std::size_t bound) { return next() % bound; }

double Numbers::between(double low, double high) { return low + (high - low) * (next() * 0x1p-32); }

void Results::sweep(std::string_view line) {
    for (const char character : line)
        sum_ = (sum_ ^ static_cast<unsigned char>(character)) * 0x100000001b3;
    ++count_;
}

void Results::end_sweep(std::string_view name) {
    char sum[16];
    add(std::string(name) + ": " + std::to_string(count_) + " results, sum " +
        std::string(sum, std::to_chars(sum, sum + sizeof sum, sum_, 16).ptr));
    sum_ = empty_sum;
    count_ = 0;
}

} // namespace pure_results
