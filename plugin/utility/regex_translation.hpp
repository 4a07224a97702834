#pragma once
// Translates ECMAScript patterns, as std::regex takes them, for the matching library.

#include <string>
#include <string_view>

namespace mk_utility {

/// Writes a pattern using only constructs that mean the same to the matching library under any of its
/// options. Inserts callouts, so that the caller can count the work: at most 64 bytes are examined between
/// two callouts, except by a repeat of one byte and by a back-reference, which have a callout after them.
/// @throws std::regex_error for an invalid pattern, and for one that nests or repeats more than the library
/// allows (250 levels, 65,535 times)
std::string translate_pattern(std::string_view pattern);

} // namespace mk_utility
