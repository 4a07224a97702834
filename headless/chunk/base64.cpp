#include "headless/chunk/base64.hpp"

#include <array>
#include <cstddef>
#include <cstdint>

namespace headless::chunk {
namespace {

constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

} // namespace

std::string to_base64(std::string_view bytes) {
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group = group << 8U | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            text += i + k > bytes.size() ? '=' : digits[group >> (18 - 6 * k) & 63U];
    }
    return text;
}

std::optional<std::string> from_base64(std::string_view text) {
    while (text.ends_with('='))
        text.remove_suffix(1);
    std::string bytes;
    std::uint32_t bits = 0;
    unsigned count = 0; // of the bits that have not become a byte
    for (const char letter : text) {
        const std::size_t digit = digits.find(letter);
        if (digit == digits.npos)
            return std::nullopt;
        bits = bits << 6U | static_cast<std::uint32_t>(digit);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> count & 255U);
        }
    }
    return bytes;
}

} // namespace headless::chunk
