#include "headless/report/printable.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <utf8proc.h>

namespace headless::report {
namespace {

struct Character {
    std::size_t bytes;
    char32_t code;
    bool valid;
};

unsigned char byte_at(std::string_view text, std::size_t index) {
    return index < text.size() ? static_cast<unsigned char>(text[index]) : 0;
}

struct Lead {
    unsigned char mask;
    unsigned char pattern;
    std::size_t bytes;
    char32_t smallest; ///< smaller codes have a shorter form
};

constexpr std::array<Lead, 4> leads{
    {{0x80, 0x00, 1, 0x0}, {0xe0, 0xc0, 2, 0x80}, {0xf0, 0xe0, 3, 0x800}, {0xf8, 0xf0, 4, 0x10000}}};

Character decode(std::string_view text, std::size_t index) {
    const Character broken{1, byte_at(text, index), false};
    for (const Lead& lead : leads) {
        const unsigned char first = byte_at(text, index);
        if ((first & lead.mask) != lead.pattern)
            continue;
        char32_t code = first & static_cast<unsigned char>(~lead.mask);
        for (std::size_t i = 1; i < lead.bytes; ++i) {
            const unsigned char next = byte_at(text, index + i);
            if ((next & 0xc0) != 0x80)
                return broken;
            code = (code << 6U) | (next & 0x3fU);
        }
        const bool surrogate = code >= 0xd800 && code <= 0xdfff;
        return code < lead.smallest || code > 0x10ffff || surrogate ? broken
                                                                    : Character{lead.bytes, code, true};
    }
    return broken;
}

bool turns_direction(char32_t code) {
    return code == 0x200e || code == 0x200f || (code >= 0x202a && code <= 0x202e) ||
           (code >= 0x2066 && code <= 0x2069);
}

bool is_shown(const Character& character) {
    const char32_t code = character.code;
    const bool control = code < 0x20 || (code >= 0x7f && code < 0xa0) || code == 0x2028 || code == 0x2029;
    return character.valid && !control && !turns_direction(code);
}

std::string escape(const Character& character) {
    switch (character.code) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        break;
    }
    std::array<char, 16> text{};
    const bool one_byte = !character.valid || character.code < 0x80;
    std::snprintf(text.data(), text.size(), one_byte ? "\\x%02x" : "\\u%04x",
                  static_cast<unsigned>(character.code));
    return text.data();
}

} // namespace

std::string printable(std::string_view text) {
    std::string shown;
    for (std::size_t i = 0; i < text.size();) {
        const Character character = decode(text, i);
        shown += is_shown(character) ? std::string(text.substr(i, character.bytes)) : escape(character);
        i += character.bytes;
    }
    return shown;
}

std::string_view fitting(std::string_view text, std::size_t columns) {
    std::size_t end = 0;
    while (end < text.size()) {
        const Character character = decode(text, end);
        const std::size_t width = character.bytes > 1 ? 2 : 1;
        if (width > columns)
            break;
        columns -= width;
        end += character.bytes;
    }
    return text.substr(0, end);
}

std::size_t display_columns(std::string_view text) {
    std::size_t columns = 0;
    for (std::size_t i = 0; i < text.size();) {
        const Character character = decode(text, i);
        columns += static_cast<std::size_t>(
            std::max(utf8proc_charwidth(static_cast<utf8proc_int32_t>(character.code)), 0));
        i += character.bytes;
    }
    return columns;
}

} // namespace headless::report
