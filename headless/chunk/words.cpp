#include "headless/chunk/words.hpp"

#include "headless/base/decimal.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace headless::chunk {
namespace {

// Loops over letters: the members of string_view call memchr for each letter, which took most of the time that
// reading a file takes.
constexpr bool is_blank(char letter) { return letter == ' ' || letter == '\t'; }

constexpr bool is_quote(char letter) { return letter == '"' || letter == '\'' || letter == '`'; }

std::size_t skip_blanks(std::string_view line, std::size_t place) {
    while (place < line.size() && is_blank(line[place]))
        ++place;
    return place;
}

std::size_t end_of_bare_word(std::string_view line, std::size_t place) {
    while (place < line.size() && !is_blank(line[place]))
        ++place;
    return place;
}

constexpr std::string_view quotes = "\"'`";

/// The first quote that does not occur in the text; none if all occur.
std::optional<char> unused_quote(std::string_view text) {
    const auto unused =
        std::ranges::find_if(quotes, [&](char quote) { return text.find(quote) == text.npos; });
    return unused == quotes.end() ? std::nullopt : std::optional(*unused);
}

} // namespace

Words::Words(std::string_view line) : line_(line), place_(line.starts_with('<') ? 1 : 0) {}

std::optional<Word> Words::next() {
    const std::size_t begin = skip_blanks(line_, place_);
    if (begin == line_.size())
        return std::nullopt;
    const bool is_quoted = is_quote(line_[begin]);
    const std::size_t text = begin + (is_quoted ? 1 : 0);
    const std::size_t text_end =
        is_quoted ? std::min(line_.find(line_[begin], text), line_.size()) : end_of_bare_word(line_, text);
    place_ = std::min(text_end + (is_quoted ? 1 : 0), line_.size());
    return Word{line_.substr(text, text_end - text), begin, place_};
}

std::optional<Word> word(std::string_view line, std::size_t number) {
    Words words(line);
    std::optional<Word> found = words.next();
    for (; found && number > 0; --number)
        found = words.next();
    return found;
}

std::string_view token(std::string_view line) {
    if (line.starts_with('|'))
        return {};
    if (!line.empty() && !is_blank(line.front()) && !is_quote(line.front()) && line.front() != '<')
        return line.substr(0, end_of_bare_word(line, 0));
    const auto first = Words(line).next();
    return first ? first->text : std::string_view{};
}

std::optional<double> number(std::string_view word) {
    word.remove_prefix(word.starts_with('+') ? 1 : 0);
    const auto number = read_decimal(word);
    if (!number || !number->rest.empty() || !std::isfinite(number->value))
        return std::nullopt;
    return number->value;
}

std::string on_one_line(std::string_view text) {
    std::string line(text);
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r' || c == '\0'; }, ' ');
    return line;
}

bool has_all_quotes(std::string_view text) { return !unused_quote(text); }

std::string in_quotes(std::string_view text) {
    std::string inner = on_one_line(text);
    const std::optional<char> quote = unused_quote(inner);
    if (!quote)
        std::ranges::replace(inner, '`', '\'');
    return quote.value_or('`') + inner + quote.value_or('`');
}

std::string as_word(std::string_view text) {
    constexpr std::string_view quoted_beginnings = "\"'`#;";
    const bool is_plain = !text.empty() && quoted_beginnings.find(text.front()) == text.npos &&
                          std::ranges::all_of(text, [](unsigned char c) { return c > ' ' && c != 0x7F; });
    return is_plain ? std::string(text) : in_quotes(text);
}

std::string decimal(double value) {
    if (!std::isfinite(value) || value == 0.0)
        return "0";
    std::array<char, 400> digits; // the smallest and the largest double need about 330
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
    return {digits.data(), end.ptr};
}

} // namespace headless::chunk
