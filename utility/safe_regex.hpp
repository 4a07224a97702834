#pragma once
// Regular expressions from users, on texts from users: the work ends, and the stack holds, whatever both are.

#include <regex>
#include <string>
#include <string_view>

namespace mk_utility {

/// Compiles an ECMAScript pattern for a matcher that does not recurse. It knows no references back to groups.
/// @throws std::regex_error for an invalid pattern, and for one of more than 1,024 bytes
std::regex compile_pattern(const std::string& pattern, std::regex::flag_type flags = std::regex::ECMAScript);

/// The text with every match of an ECMAScript pattern, from left to right, replaced by what `format`, an
/// ECMAScript replacement format, makes of it.
/// @throws std::regex_error as `compile_pattern`, when the search takes out of all proportion to the text,
/// and for a pattern with references back when text and pattern are not short
std::string replace_all(std::string_view text, const std::string& pattern, const std::string& format);

} // namespace mk_utility
