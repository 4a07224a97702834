#pragma once
// Regular expressions from users, applied to texts from users. Whatever both are, the work is bounded and the
// stack does not overflow. Patterns mean what they mean to std::regex in its ECMAScript grammar, byte by
// byte, on every platform and in every locale.

#include <string>
#include <string_view>

namespace mk_utility {

enum class LetterCase { matters, is_ignored };

/// Returns whether a pattern matches the whole text.
/// @throws std::regex_error if the pattern is invalid, nests 250 levels deep, repeats more than 65,535 times
/// or takes more than 64 KiB when compiled, and if the search takes too long for the length of the text
bool matches_whole(std::string_view text, std::string_view pattern, LetterCase letter_case);

/// Replaces every match of a pattern, from left to right, using the ECMAScript replacement format `format`.
/// @throws std::regex_error as `matches_whole` does, and for a result of more than 256 MiB
std::string replace_all(std::string_view text, std::string_view pattern, std::string_view format);

} // namespace mk_utility
