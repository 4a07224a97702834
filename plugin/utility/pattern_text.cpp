#include "utility/pattern_text.hpp"

#include <algorithm>

namespace mk_utility {

char PatternText::take(std::regex_constants::error_type at_end) {
    if (rest_.empty())
        throw std::regex_error(at_end);
    const char next = rest_.front();
    rest_.remove_prefix(1);
    return next;
}

bool PatternText::take_if(char expected) {
    if (!is_at(expected))
        return false;
    rest_.remove_prefix(1);
    return true;
}

std::size_t PatternText::take_number(std::size_t most) {
    std::size_t number = 0;
    while (is_at_digit())
        number = std::min(
            10 * number + static_cast<std::size_t>(take(std::regex_constants::error_escape) - '0'), most);
    return number;
}

std::string_view PatternText::take_until(std::string_view end, std::regex_constants::error_type missing) {
    const std::size_t length = rest_.find(end);
    if (length == std::string_view::npos)
        throw std::regex_error(missing);
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(length + end.size());
    return taken;
}

} // namespace mk_utility
