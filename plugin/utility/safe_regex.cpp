#include "utility/safe_regex.hpp"

#include "utility/regex_search.hpp"

#include <algorithm>
#include <cstddef>
#include <regex>
#include <utility>

namespace mk_utility {
namespace {

// A format can repeat the text for each of its matches.
constexpr std::size_t longest_result = std::size_t{1} << 28;

void append(std::string& result, std::string_view more) {
    if (more.size() > longest_result - std::min(result.size(), longest_result))
        throw std::regex_error(std::regex_constants::error_complexity);
    result += more;
}

/// Returns how many digits the number of a group has, at most two.
std::size_t count_digits(std::string_view format) {
    return std::min(format.find_first_not_of("0123456789"), std::min<std::size_t>(format.size(), 2));
}

/// What "$" followed by `format` stands for, and how many bytes of the format it uses.
std::pair<std::string_view, std::size_t> replacement(std::string_view format, const RegexSearch& match) {
    if (const std::size_t digits = count_digits(format); digits > 0)
        return {match.group(std::stoul(std::string(format.substr(0, digits)))), digits};
    switch (format.empty() ? '\0' : format.front()) {
    case '$':
        return {"$", 1};
    case '&':
        return {match.group(0), 1};
    case '`':
        return {match.before(), 1};
    case '\'':
        return {match.after(), 1};
    default:
        return {"$", 0};
    }
}

void append_replacement(std::string& result, std::string_view format, const RegexSearch& match) {
    for (;;) {
        const std::size_t dollar = format.find('$');
        append(result, format.substr(0, dollar));
        if (dollar == std::string_view::npos)
            return;
        const auto [text, length] = replacement(format.substr(dollar + 1), match);
        append(result, text);
        format.remove_prefix(dollar + 1 + length);
    }
}

} // namespace

bool matches_whole(std::string_view text, std::string_view pattern, LetterCase letter_case) {
    return RegexSearch(text, pattern, letter_case).matches_whole();
}

std::string replace_all(std::string_view text, std::string_view pattern, std::string_view format) {
    RegexSearch search(text, pattern, LetterCase::matters);
    std::string result;
    std::string_view rest = text;
    while (search.find_next()) {
        append(result, search.before());
        append_replacement(result, format, search);
        rest = search.after();
    }
    append(result, rest);
    return result;
}

} // namespace mk_utility
