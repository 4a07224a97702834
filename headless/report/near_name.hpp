#pragma once
// File names that were meant to be the same and are not.

#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// Equal for two names that may be one line: Unicode form, letter case, blanks at the ends of the stem and a
/// language at its beginning or end are taken out. Names that are not UTF-8 are taken byte by byte.
std::string loose_key(std::string_view name);

/// What tells apart two different names of the same loose key, in words for the user: "letter case", "Unicode
/// form", "blanks", "language". Empty when the names are not believable as one line.
std::vector<std::string_view> differences_between(std::string_view left, std::string_view right);

} // namespace headless
