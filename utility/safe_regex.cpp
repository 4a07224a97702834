#include "utility/safe_regex.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <utility>
#include <vector>

namespace mk_utility {
namespace {

// A pattern nests as deep as it is long, and compiling it recurses with it.
constexpr std::size_t longest_pattern = 1024;

// Looks at positions that a replacement may take: plenty for a pattern that looks at each a few times, and
// seconds at most for any other, with a text of 1 MiB. Before a look the matcher walks through groups and
// alternatives; a few of them take as long as the look.
constexpr std::size_t least_budget = std::size_t{1} << 21;
constexpr std::size_t looks_per_character = 32;
constexpr std::size_t branches_per_look = 4;

// References back need the matcher that recurses. The stack that it takes grows with the text's bytes times
// the pattern's; 8 MiB hold three times as many.
constexpr std::size_t most_bytes_by_bytes = 32768;

/// What a search may still take.
struct Budget {
    std::size_t left = 0;
    std::size_t cost_of_look = 1;

    void pay() {
        if (left < cost_of_look)
            throw std::regex_error(std::regex_constants::error_complexity);
        left -= cost_of_look;
    }
};

/// Walks a text and pays for each comparison with another position, which the matcher makes before it looks
/// at a character and where a path fails without a look, since a search cannot be stopped in another way.
class CountedPosition {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    CountedPosition() = default;
    CountedPosition(const char* at, Budget* budget) : at_(at), budget_(budget) {}

    reference operator*() const { return *at_; }
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
    bool operator==(const CountedPosition& other) const {
        if (budget_)
            budget_->pay();
        return at_ == other.at_;
    }

private:
    const char* at_ = nullptr;
    Budget* budget_ = nullptr;
};

/// The larger number of a counted repeat such as "{2,5}", whose text begins behind the brace.
std::size_t repeats(std::string_view text) {
    constexpr std::size_t more_than_compiles = 100000;
    std::size_t most = 0;
    std::size_t number = 0;
    for (const char digit : text.substr(0, text.find('}'))) {
        const bool is_digit = digit >= '0' && digit <= '9';
        number =
            is_digit ? std::min(10 * number + static_cast<std::size_t>(digit - '0'), more_than_compiles) : 0;
        most = std::max(most, number);
    }
    return most;
}

/// How many groups and alternatives a pattern compiles to, counted repeats written out. Brackets that stand
/// for themselves count too.
std::size_t count_branches(std::string_view pattern) {
    std::vector<std::size_t> open{0};
    std::size_t closed = 0; // in the group that the text before ends with
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const std::size_t before = std::exchange(closed, 0);
        if (pattern[i] == '(') {
            open.push_back(1);
        } else if (pattern[i] == '|') {
            ++open.back();
        } else if (pattern[i] == ')') {
            closed = open.back();
            if (open.size() > 1)
                open.pop_back();
            open.back() += closed;
        } else if (pattern[i] == '{') {
            open.back() += before * repeats(pattern.substr(i + 1));
        }
    }
    return std::accumulate(open.begin(), open.end(), std::size_t{0});
}

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
    Budget budget{std::max(least_budget, looks_per_character * text.size()),
                  1 + count_branches(pattern) / branches_per_look};
    const CountedPosition begin(text.data(), &budget);
    const CountedPosition end(text.data() + text.size(), &budget);
    std::string result;
    std::regex_replace(std::back_inserter(result), begin, end, regex, format);
    return result;
}

} // namespace mk_utility
