#include "utility/safe_regex.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace mk_utility {
namespace {

// A pattern nests as deep as it is long, and compiling it recurses with it.
constexpr std::size_t longest_pattern = 1024;

// Looks at characters that a replacement may take: plenty for a pattern that looks at each a few times, and
// seconds at most for any other, with a text of 1 MiB.
constexpr std::size_t least_budget = std::size_t{1} << 20;
constexpr std::size_t looks_per_character = 16;

// References back need the matcher that recurses. The stack that it takes grows with the text's bytes times
// the pattern's; 8 MiB hold three times as many.
constexpr std::size_t most_bytes_by_bytes = 32768;

/// Walks a text and counts each look at a character, since a search cannot be stopped in another way.
class CountedPosition {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CountedPosition() = default;
    CountedPosition(const char* at, std::size_t* budget) : at_(at), budget_(budget) {}

    reference operator*() const {
        if ((*budget_)-- == 0)
            throw std::regex_error(std::regex_constants::error_complexity);
        return *at_;
    }
    CountedPosition& operator++() {
        ++at_;
        return *this;
    }
    CountedPosition operator++(int) { return {at_++, budget_}; }
    CountedPosition& operator--() {
        --at_;
        return *this;
    }
    CountedPosition operator--(int) { return {at_--, budget_}; }
    bool operator==(const CountedPosition& other) const { return at_ == other.at_; }

private:
    const char* at_ = nullptr;
    std::size_t* budget_ = nullptr;
};

void check_length(const std::string& pattern) {
    if (pattern.size() > longest_pattern)
        throw std::regex_error(std::regex_constants::error_complexity);
}

std::regex compile_for(std::string_view text, const std::string& pattern) {
    try {
        return compile_pattern(pattern);
    } catch (const std::regex_error& error) {
        check_length(pattern);
        if (error.code() != std::regex_constants::error_complexity ||
            text.size() * pattern.size() > most_bytes_by_bytes)
            throw;
        return std::regex(pattern); // refers back
    }
}

} // namespace

std::regex compile_pattern(const std::string& pattern, std::regex::flag_type flags) {
    check_length(pattern);
#ifdef __GLIBCXX__
    // The default matcher recurses once per character and overflows the stack on long texts; this one does
    // not.
    flags |= std::regex_constants::__polynomial;
#endif
    return std::regex(pattern, flags);
}

std::string replace_all(std::string_view text, const std::string& pattern, const std::string& format) {
    const std::regex regex = compile_for(text, pattern);
    std::size_t budget = std::max(least_budget, looks_per_character * text.size());
    const CountedPosition begin(text.data(), &budget);
    const CountedPosition end(text.data() + text.size(), &budget);
    std::string result;
    std::regex_replace(std::back_inserter(result), begin, end, regex, format);
    return result;
}

} // namespace mk_utility
