#pragma once
// File names that were meant to be the same but differ.

#include <string>
#include <string_view>
#include <vector>

namespace headless::matching {

/// A key that is equal for two names that may be the same line: Unicode form, letter case, blanks at the ends
/// of the stem, and a language tag at its beginning or end are removed. Names that are not UTF-8 are
/// processed byte by byte.
std::string loose_key(std::string_view name);

/// The differences between two different names with the same loose key, as text for the user: "letter case",
/// "Unicode form", "blanks", "language". Empty if the names are not plausible as the same line.
std::vector<std::string_view> differences_between(std::string_view left, std::string_view right);

} // namespace headless::matching
