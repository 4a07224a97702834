#include "headless/rpp/chunk_writer.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <optional>

namespace headless::rpp {
namespace {

constexpr std::string_view quotes = "\"'`";

/// The first quote that does not occur in the text; none if all occur.
std::optional<char> unused_quote(std::string_view text) {
    const auto unused =
        std::ranges::find_if(quotes, [&](char quote) { return text.find(quote) == text.npos; });
    return unused == quotes.end() ? std::nullopt : std::optional(*unused);
}

} // namespace

std::string on_one_line(std::string_view text) {
    std::string line(text);
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r' || c == '\0'; }, ' ');
    return line;
}

std::string in_quotes(std::string_view text) {
    std::string inner = on_one_line(text);
    const std::optional<char> quote = unused_quote(inner);
    if (!quote)
        std::ranges::replace(inner, '`', '\'');
    return quote.value_or('`') + inner + quote.value_or('`');
}

std::string decimal(double value) {
    if (!std::isfinite(value) || value == 0.0)
        return "0";
    std::array<char, 400> digits; // the smallest and the largest double need about 330
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
    return {digits.data(), end.ptr};
}

void ChunkWriter::start(std::string_view name) {
    text_.append(2 * depth_, ' ');
    text_ += name;
}

void ChunkWriter::append_word(std::string_view word) {
    if (!word.empty()) {
        text_ += ' ';
        text_ += word;
    }
}

void ChunkWriter::close() {
    --depth_;
    start(">\n");
}

void ChunkWriter::name(std::string_view text) {
    line("NAME", text);
    if (!unused_quote(text)) {
        open("NAME");
        start("|");
        text_ += on_one_line(text) + '\n';
        close();
    }
}

std::string ChunkWriter::next_id() {
    std::array<char, 40> id;
    std::snprintf(id.data(), id.size(), "{FE15BA40-0000-4000-8000-%012X}", ++ids_);
    return id.data();
}

} // namespace headless::rpp
