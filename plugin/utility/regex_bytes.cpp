#include "utility/regex_bytes.hpp"

#include "common/letter_case.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace mk_utility {
namespace {

using namespace std::string_view_literals;

struct NamedClass {
    std::string_view name;
    std::string_view ranges; ///< first and last byte of each
};

constexpr NamedClass named_classes[] = {{"d", "09"},
                                        {"s", "\t\r  "},
                                        {"w", "09AZ__az"},
                                        {"alnum", "09AZaz"},
                                        {"alpha", "AZaz"},
                                        {"blank", "\t\t  "},
                                        {"cntrl", "\0\x1f\x7f\x7f"sv},
                                        {"digit", "09"},
                                        {"graph", "!~"},
                                        {"lower", "az"},
                                        {"print", " ~"},
                                        {"punct", "!/:@[`{~"},
                                        {"space", "\t\r  "},
                                        {"upper", "AZ"},
                                        {"xdigit", "09AFaf"}};

// POSIX's names of bytes: from 0 on, after Z, and after z.
// clang-format off
constexpr std::string_view names_from_zero[] = {
    "NUL", "SOH", "STX", "ETX", "EOT", "ENQ", "ACK", "alert", "backspace", "tab", "newline", "vertical-tab",
    "form-feed", "carriage-return", "SO", "SI", "DLE", "DC1", "DC2", "DC3", "DC4", "NAK", "SYN", "ETB",
    "CAN", "EM", "SUB", "ESC", "IS4", "IS3", "IS2", "IS1", "space", "exclamation-mark", "quotation-mark",
    "number-sign", "dollar-sign", "percent-sign", "ampersand", "apostrophe", "left-parenthesis",
    "right-parenthesis", "asterisk", "plus-sign", "comma", "hyphen", "period", "slash", "zero", "one",
    "two", "three", "four", "five", "six", "seven", "eight", "nine", "colon", "semicolon", "less-than-sign",
    "equals-sign", "greater-than-sign", "question-mark", "commercial-at"};
// clang-format on
constexpr std::string_view names_after_upper_case[] = {
    "left-square-bracket", "backslash", "right-square-bracket", "circumflex", "underscore", "grave-accent"};
constexpr std::string_view names_after_lower_case[] = {"left-curly-bracket", "vertical-line",
                                                       "right-curly-bracket", "tilde", "DEL"};

bool is_letter(char byte) { return letter_case::to_lower(byte) >= 'a' && letter_case::to_lower(byte) <= 'z'; }

bool is_alphanumeric(char byte) { return is_letter(byte) || (byte >= '0' && byte <= '9'); }

bool same_but_for_case(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char left, char right) {
        return letter_case::to_lower(left) == letter_case::to_lower(right);
    });
}

template <std::size_t Count>
std::optional<char> find_name(const std::string_view (&names)[Count], char first, std::string_view name) {
    const auto* const found = std::find(std::begin(names), std::end(names), name);
    if (found == std::end(names))
        return std::nullopt;
    return static_cast<char>(first + (found - names));
}

} // namespace

std::optional<ByteSet> class_named(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(named_classes), std::end(named_classes),
                     [name](const NamedClass& known) { return same_but_for_case(known.name, name); });
    if (found == std::end(named_classes))
        return std::nullopt;
    ByteSet bytes;
    for (std::size_t i = 0; i < found->ranges.size(); i += 2)
        for (std::size_t byte = byte_of(found->ranges[i]); byte <= byte_of(found->ranges[i + 1]); ++byte)
            bytes.set(byte);
    return bytes;
}

std::optional<char> character_named(std::string_view name) {
    if (name.size() == 1 && is_letter(name[0]))
        return name[0];
    if (const auto found = find_name(names_from_zero, '\0', name))
        return found;
    if (const auto found = find_name(names_after_upper_case, '[', name))
        return found;
    return find_name(names_after_lower_case, '{', name);
}

std::string written_byte(char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    if (is_alphanumeric(byte))
        return std::string(1, byte);
    return {'\\', 'x', digits[byte_of(byte) >> 4U], digits[byte_of(byte) & 15U]};
}

std::string written_set(const ByteSet& bytes, bool negated) {
    if (bytes.none())
        return negated ? written_set(ByteSet().set(), false) : "(?:(?!))";
    std::string written = negated ? "[^" : "[";
    for (std::size_t first = 0; first < bytes.size(); ++first) {
        if (!bytes[first])
            continue;
        std::size_t last = first;
        while (last + 1 < bytes.size() && bytes[last + 1])
            ++last;
        written += written_byte(static_cast<char>(first)) + "-" + written_byte(static_cast<char>(last));
        first = last;
    }
    return written + "]";
}

} // namespace mk_utility
