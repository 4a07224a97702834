#include "headless/chunk/text.hpp"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

namespace headless::chunk {

Text Text::in_file(std::string_view bytes) { return {bytes.data(), bytes.size(), false, true}; }

Text Text::literal(std::string_view content) { return {content.data(), content.size(), false, false}; }

Text Text::made(std::string_view content) { return copy_of(content, false); }

Text Text::copy_of(std::string_view bytes, bool has_layout) {
    auto* copy = new char[bytes.size()];
    std::ranges::copy(bytes, copy);
    return {copy, bytes.size(), true, has_layout};
}

Text::Text(const Text& other) : Text() {
    *this = other.owns_ ? copy_of(other.bytes(), other.has_layout_)
                        : Text(other.data_, other.size_, false, other.has_layout_);
}

Text::Text(Text&& other) noexcept
    : data_(std::exchange(other.data_, "")), size_(std::exchange(other.size_, 0)),
      owns_(std::exchange(other.owns_, false)), has_layout_(other.has_layout_) {}

Text& Text::operator=(Text other) noexcept {
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    std::swap(owns_, other.owns_);
    std::swap(has_layout_, other.has_layout_);
    return *this;
}

Text::~Text() {
    if (owns_)
        delete[] data_;
}

std::string_view Text::content() const {
    std::string_view content = bytes();
    if (!has_layout_)
        return content;
    std::size_t indent = 0;
    while (indent < content.size() && (content[indent] == ' ' || content[indent] == '\t'))
        ++indent;
    content.remove_prefix(indent);
    content.remove_suffix(content.ends_with('\n') ? 1 : 0);
    content.remove_suffix(content.ends_with('\r') ? 1 : 0);
    return content;
}

void Text::replace(std::size_t begin, std::size_t length, std::string_view replacement) {
    const std::string_view content = this->content();
    std::string bytes(this->bytes());
    bytes.replace(static_cast<std::size_t>(content.data() - data_) + begin, length, replacement);
    *this = copy_of(bytes, has_layout_);
}

} // namespace headless::chunk
