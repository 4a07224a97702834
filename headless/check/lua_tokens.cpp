#include "headless/check/lua_tokens.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace headless::check {
namespace {

constexpr std::array<std::string_view, 22> keywords{
    "and", "break", "do",  "else", "elseif", "end",    "false",  "for",  "function", "goto",  "if",
    "in",  "local", "nil", "not",  "or",     "repeat", "return", "then", "true",     "until", "while"};

// The longest first.
constexpr std::array<std::string_view, 10> long_symbols{
    "...", "..", "::", "==", "~=", "<=", ">=", "//", "<<", ">>"};

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool is_hexadecimal(char c) { return is_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }
bool is_blank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

void append_utf8(std::string& text, std::uint32_t code) {
    constexpr std::uint32_t low = 0x3F;
    const auto tail = [&](unsigned shift) { text += static_cast<char>(0x80U | ((code >> shift) & low)); };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0U | (code >> 6U));
        tail(0);
    } else if (code < 0x10000) {
        text += static_cast<char>(0xE0U | (code >> 12U));
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0U | ((code >> 18U) & 7U));
        tail(12);
        tail(6);
        tail(0);
    }
}

class Scanner {
public:
    explicit Scanner(std::string_view source) : rest_(source) {
        if (rest_.starts_with("\xEF\xBB\xBF"))
            rest_.remove_prefix(3);
        if (rest_.starts_with('#')) // for the shell
            take(std::min(rest_.find('\n'), rest_.size()));
    }

    std::vector<Token> tokens() {
        std::vector<Token> all;
        for (skip(); !rest_.empty(); skip())
            all.push_back(next());
        all.push_back({TokenKind::end, "", line_});
        return all;
    }

private:
    char at(std::size_t index) const { return index < rest_.size() ? rest_[index] : '\0'; }

    std::string_view take(std::size_t bytes) {
        const std::string_view taken = rest_.substr(0, bytes);
        line_ += static_cast<int>(std::ranges::count(taken, '\n'));
        rest_.remove_prefix(taken.size());
        return taken;
    }

    template <class Predicate>
    std::size_t length_of(std::size_t begin, Predicate belongs) const {
        std::size_t end = begin;
        while (end < rest_.size() && belongs(rest_[end]))
            ++end;
        return end - begin;
    }

    void skip() {
        for (;;) {
            take(length_of(0, is_blank));
            if (!rest_.starts_with("--"))
                return;
            take(2);
            if (!long_text())
                take(std::min(rest_.find('\n'), rest_.size()));
        }
    }

    Token next() {
        const int line = line_;
        const char first = at(0);
        if (is_letter(first)) {
            const std::string_view word =
                take(length_of(0, [](char c) { return is_letter(c) || is_digit(c); }));
            const bool is_keyword = std::ranges::find(keywords, word) != keywords.end();
            return {is_keyword ? TokenKind::keyword : TokenKind::name, std::string(word), line};
        }
        if (is_digit(first) || (first == '.' && is_digit(at(1))))
            return {TokenKind::number, std::string(take(number_length())), line};
        if (first == '"' || first == '\'')
            return {TokenKind::text, short_text(), line};
        if (first == '[')
            if (auto text = long_text())
                return {TokenKind::text, *std::move(text), line};
        for (const std::string_view symbol : long_symbols)
            if (rest_.starts_with(symbol))
                return {TokenKind::symbol, std::string(take(symbol.size())), line};
        return {TokenKind::symbol, std::string(take(1)), line};
    }

    std::size_t number_length() const {
        const bool is_hex = at(0) == '0' && (at(1) == 'x' || at(1) == 'X');
        std::size_t length = is_hex ? 2 : 0;
        for (; length < rest_.size(); ++length) {
            const char c = rest_[length];
            const char before = length > 0 ? rest_[length - 1] : '\0';
            const bool is_exponent = is_hex ? before == 'p' || before == 'P' : before == 'e' || before == 'E';
            const bool is_sign = (c == '+' || c == '-') && is_exponent;
            if (!is_digit(c) && !is_letter(c) && c != '.' && !is_sign)
                break;
        }
        return length;
    }

    /// The text in long brackets that begins here; otherwise nothing is taken.
    std::optional<std::string> long_text() {
        const std::size_t level = at(0) == '[' ? length_of(1, [](char c) { return c == '='; }) : 0;
        if (at(0) != '[' || at(level + 1) != '[')
            return std::nullopt;
        const std::string closing = ']' + std::string(level, '=') + ']';
        take(level + 2);
        std::string text(take(std::min(rest_.find(closing), rest_.size())));
        take(closing.size());
        if (text.starts_with('\r'))
            text.erase(0, 1);
        if (text.starts_with('\n'))
            text.erase(0, 1);
        return text;
    }

    std::string short_text() {
        const char quote = take(1).front();
        std::string text;
        while (!rest_.empty() && at(0) != quote) {
            const char c = take(1).front();
            if (c == '\\' && !rest_.empty())
                append_escaped(text);
            else
                text += c;
        }
        take(1);
        return text;
    }

    std::uint32_t take_number(std::size_t digits, int base) {
        const std::string_view text = take(digits);
        std::uint32_t number = 0;
        std::from_chars(text.data(), text.data() + text.size(), number, base);
        return number;
    }

    void append_escaped(std::string& text) {
        constexpr std::string_view letters = "abfnrtv";
        constexpr std::string_view meanings = "\a\b\f\n\r\t\v";
        if (is_digit(at(0))) {
            text += static_cast<char>(take_number(std::min<std::size_t>(3, length_of(0, is_digit)), 10));
            return;
        }
        const char c = take(1).front();
        if (const std::size_t letter = letters.find(c); letter != std::string_view::npos) {
            text += meanings[letter];
        } else if (c == 'x') {
            text += static_cast<char>(take_number(2, 16));
        } else if (c == 'u') {
            take(1);
            append_utf8(text, take_number(length_of(0, is_hexadecimal), 16));
            take(1);
        } else if (c == 'z') {
            take(length_of(0, is_blank));
        } else {
            text += c; // a quote, a backslash, or a line break
        }
    }

    std::string_view rest_;
    int line_ = 1;
};

} // namespace

std::vector<Token> lua_tokens(std::string_view source) { return Scanner(source).tokens(); }

} // namespace headless::check
