#include "headless/chunk/words.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace headless::chunk {
namespace {

constexpr std::string_view blanks = " \t";
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
    const std::size_t begin = line_.find_first_not_of(blanks, place_);
    if (begin == line_.npos)
        return std::nullopt;
    const bool is_quoted = quotes.find(line_[begin]) != quotes.npos;
    const std::size_t text = begin + (is_quoted ? 1 : 0);
    const std::size_t text_end = std::min(
        is_quoted ? line_.find(line_[begin], text) : line_.find_first_of(blanks, text), line_.size());
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
    const auto first = Words(line).next();
    return first ? first->text : std::string_view{};
}

std::optional<double> number(std::string_view word) {
    double value = 0.0;
    word.remove_prefix(word.starts_with('+') ? 1 : 0);
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
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
