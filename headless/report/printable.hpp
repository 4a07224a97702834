#pragma once
// Text from outside made fit for one line of a terminal: file names hold any byte but '/' and NUL.

#include <cstddef>
#include <string>
#include <string_view>

namespace headless {

/// The text with everything made visible that would not stand in its line: control characters and marks that
/// turn the direction of writing as \n, \t, \x1b or \u202e, bytes that are not UTF-8 as \xff. All else stays.
/// Printing a printable text once more changes nothing.
std::string printable(std::string_view text);

/// The longest start of a printable text that fits into so many terminal columns. Every character beyond
/// ASCII counts as two columns, as wide as any is.
std::string_view fitting(std::string_view text, std::size_t columns);

/// How many terminal columns a printable text takes, near enough to line up a table.
std::size_t display_columns(std::string_view text);

} // namespace headless
