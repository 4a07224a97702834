#include "headless/rpp/chunk_writer.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace headless::rpp {
namespace {

bool is_control(char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }

} // namespace

std::string in_quotes(std::string_view text) {
    std::string inner(text);
    std::ranges::replace_if(inner, is_control, ' ');
    const auto lacks = [&](char c) { return inner.find(c) == std::string::npos; };
    char quote = '`';
    if (lacks('"')) {
        quote = '"';
    } else if (lacks('\'')) {
        quote = '\'';
    } else {
        std::ranges::replace(inner, '`', '\'');
    }
    return quote + inner + quote;
}

std::string decimal(double value) {
    if (!std::isfinite(value) || value == 0.0) {
        return "0";
    }
    std::array<char, 400> digits; // the smallest and the largest double take some 330
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

std::string ChunkWriter::next_id() {
    std::array<char, 40> id;
    std::snprintf(id.data(), id.size(), "{FE15BA40-0000-4000-8000-%012X}", ++ids_);
    return id.data();
}

} // namespace headless::rpp
