#include "headless/chunk/guid.hpp"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace headless::chunk {
namespace {

constexpr std::string_view form = "{hhhhhhhh-hhhh-hhhh-hhhh-hhhhhhhhhhhh}";

// The first bytes of all own identifiers; a running number follows.
constexpr std::array<std::uint8_t, 12> own_beginning{0xFE, 0x15, 0xBA, 0x40, 0, 0, 0x40, 0, 0x80, 0, 0, 0};

} // namespace

std::optional<Guid> guid_of(std::string_view text) {
    if (text.size() != form.size())
        return std::nullopt;
    Guid guid;
    std::size_t byte = 0;
    for (std::size_t i = 0; i < form.size(); ++i) {
        if (form[i] != 'h') {
            if (text[i] != form[i])
                return std::nullopt;
            continue;
        }
        const char* digits = text.data() + i;
        if (std::from_chars(digits, digits + 2, guid.bytes[byte++], 16).ptr != digits + 2)
            return std::nullopt;
        ++i; // a byte is two digits
    }
    return guid;
}

std::string text_of(const Guid& guid) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text(form);
    std::size_t digit = 0;
    for (char& letter : text) {
        if (letter == 'h') {
            const unsigned byte = guid.bytes[digit / 2];
            letter = digits[digit % 2 == 0 ? byte / 16 : byte % 16];
            ++digit;
        }
    }
    return text;
}

bool is_own(const Guid& guid) {
    return std::equal(own_beginning.begin(), own_beginning.end(), guid.bytes.begin());
}

Guid GuidSource::next() {
    ++last_;
    Guid guid;
    std::ranges::copy(own_beginning, guid.bytes.begin());
    for (std::size_t i = 0; i < 4; ++i)
        guid.bytes[15 - i] = static_cast<std::uint8_t>(last_ >> (8 * i));
    return guid;
}

void GuidSource::pass_over(const Guid& guid) {
    if (!is_own(guid))
        return;
    std::uint32_t number = 0;
    for (std::size_t i = own_beginning.size(); i < guid.bytes.size(); ++i)
        number = number * 256 + guid.bytes[i];
    last_ = std::max(last_, number);
}

} // namespace headless::chunk
