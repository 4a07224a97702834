#pragma once
// A regular expression, read byte by byte.

#include <cstddef>
#include <regex>
#include <string_view>

namespace mk_utility {

/// The unread rest of a pattern.
class PatternText {
public:
    explicit PatternText(std::string_view pattern) : rest_(pattern) {}

    bool is_at_end() const { return rest_.empty(); }
    bool is_at(char expected) const { return !rest_.empty() && rest_.front() == expected; }
    bool is_at_one_of(std::string_view expected) const {
        return !rest_.empty() && expected.find(rest_.front()) != std::string_view::npos;
    }
    bool is_at_digit() const { return is_at_one_of("0123456789"); }

    /// Takes the next byte.
    /// @throws std::regex_error with `at_end` if there is none
    char take(std::regex_constants::error_type at_end);

    /// Skips the next byte if it is the expected one.
    bool take_if(char expected);

    /// Takes the digits that follow as a number, limited to `most`.
    std::size_t take_number(std::size_t most);

    /// Takes the text before `end` and skips `end`.
    /// @throws std::regex_error with `missing` if there is no `end`
    std::string_view take_until(std::string_view end, std::regex_constants::error_type missing);

private:
    std::string_view rest_;
};

} // namespace mk_utility
