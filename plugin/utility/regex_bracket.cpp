#include "utility/regex_bracket.hpp"

#include "common/letter_case.hpp"

#include <optional>
#include <string_view>

namespace mk_utility {
namespace {

using namespace std::regex_constants;

[[noreturn]] void refuse(error_type reason) { throw std::regex_error(reason); }

std::size_t value_of_hex_digit(char digit) {
    constexpr std::string_view digits = "0123456789abcdef";
    const std::size_t value = digits.find(letter_case::to_lower(digit));
    return value != std::string_view::npos ? value : throw std::regex_error(error_escape);
}

/// Reads a byte written with `digits` hexadecimal digits. Only the low byte of a larger number counts.
char read_hex(PatternText& text, int digits) {
    std::size_t value = 0;
    for (; digits > 0; --digits)
        value = 16 * value + value_of_hex_digit(text.take(error_escape));
    return static_cast<char>(value & 0xffU);
}

/// Returns the bytes of \d, \s or \w, or all others if the letter is a capital.
Escape set_escape(char letter) {
    Escape escape{.kind = Escape::Kind::set, .set = class_named({&letter, 1}).value()};
    if (letter != letter_case::to_lower(letter))
        escape.set.flip();
    return escape;
}

char control_byte(char letter) {
    constexpr std::string_view letters = "0bfnrtv";
    constexpr std::string_view bytes("\0\b\f\n\r\t\v", 7);
    const std::size_t at = letters.find(letter);
    return at != std::string_view::npos ? bytes[at] : letter;
}

ByteSet class_of(std::string_view name) {
    const std::optional<ByteSet> bytes = class_named(name);
    return bytes ? *bytes : throw std::regex_error(error_ctype);
}

char character_of(std::string_view name) {
    const std::optional<char> byte = character_named(name);
    return byte ? *byte : throw std::regex_error(error_collate);
}

/// Collects a set term by term. The last single byte is held back, because it may begin a range.
class Brackets {
public:
    explicit Brackets(PatternText& text) : text_(text), is_negated_(text.take_if('^')) {}

    std::string read() {
        while (!text_.take_if(']'))
            read_term();
        flush();
        return written_set(bytes_, is_negated_);
    }

private:
    enum class Last { nothing, byte, set };

    void read_term() {
        const char next = text_.take(error_brack);
        if (next == '-')
            read_dash();
        else if (next == '[' && text_.is_at_one_of(".:="))
            read_named();
        else if (const Escape escape = read_byte_or_set(next); escape.kind == Escape::Kind::set)
            add(escape.set);
        else
            keep(escape.byte);
    }

    void read_dash() {
        if (text_.is_at(']') || last_ == Last::nothing)
            return keep('-');
        if (last_ == Last::set || (text_.is_at('[') && !is_plain_bracket()))
            refuse(error_range);
        const Escape escape = read_byte_or_set(text_.take(error_brack));
        if (escape.kind == Escape::Kind::set)
            refuse(error_range);
        add_range(kept_, escape.byte);
    }

    /// Returns whether the "[" that follows is a literal.
    bool is_plain_bracket() const {
        PatternText ahead = text_;
        ahead.take(error_brack);
        return !ahead.is_at_one_of(".:=");
    }

    void read_named() {
        const char kind = text_.take(error_brack);
        const std::string_view name = text_.take_until({&kind, 1}, kind == ':' ? error_ctype : error_collate);
        if (text_.take(error_brack) != ']')
            refuse(kind == ':' ? error_ctype : error_collate);
        if (kind == '.')
            return keep(character_of(name));
        add(kind == ':' ? class_of(name) : both_cases_of(character_of(name)));
    }

    static ByteSet both_cases_of(char byte) {
        ByteSet bytes;
        for (std::size_t other = 0; other < bytes.size(); ++other)
            bytes[other] = letter_case::to_lower(static_cast<char>(other)) == letter_case::to_lower(byte);
        return bytes;
    }

    Escape read_byte_or_set(char first) {
        if (first != '\\')
            return {.byte = first};
        Escape escape = read_escape(text_, true);
        if (escape.kind != Escape::Kind::byte && escape.kind != Escape::Kind::set)
            refuse(error_brack);
        return escape;
    }

    /// Compares bytes as signed values, as std::regex compares plain char on most machines.
    static int signed_value(char byte) { return byte_of(byte) < 128 ? byte_of(byte) : byte_of(byte) - 256; }

    void add_range(char first, char last) {
        if (signed_value(first) > signed_value(last))
            refuse(error_range);
        for (int value = signed_value(first); value <= signed_value(last); ++value)
            bytes_.set(byte_of(static_cast<char>(value)));
        last_ = Last::nothing;
    }

    void add(const ByteSet& bytes) {
        flush();
        bytes_ |= bytes;
        last_ = Last::set;
    }

    void keep(char byte) {
        flush();
        kept_ = byte;
        last_ = Last::byte;
    }

    void flush() {
        if (last_ == Last::byte)
            bytes_.set(byte_of(kept_));
    }

    PatternText& text_;
    bool is_negated_;
    ByteSet bytes_;
    Last last_ = Last::nothing;
    char kept_ = '\0';
};

} // namespace

Escape read_escape(PatternText& text, bool in_brackets) {
    constexpr std::size_t beyond_groups = 100000;
    if (text.is_at_one_of("123456789"))
        return {.kind = Escape::Kind::back_reference, .group = text.take_number(beyond_groups)};
    const char letter = text.take(error_escape);
    switch (letter) {
    case 'b':
        if (in_brackets)
            break;
        return {.kind = Escape::Kind::word_boundary};
    case 'B':
        return {.kind = Escape::Kind::no_word_boundary};
    case 'd':
    case 'D':
    case 's':
    case 'S':
    case 'w':
    case 'W':
        return set_escape(letter);
    case 'c':
        return {.byte = text.take(error_escape)};
    case 'x':
        return {.byte = read_hex(text, 2)};
    case 'u':
        return {.byte = read_hex(text, 4)};
    default:
        break;
    }
    return {.byte = control_byte(letter)};
}

std::string read_brackets(PatternText& text) { return Brackets(text).read(); }

} // namespace mk_utility
