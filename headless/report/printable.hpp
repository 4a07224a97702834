#pragma once
// Makes text from outside safe to print on one line of a terminal: file names hold any byte but '/' and NUL.

#include <cstddef>
#include <string>
#include <string_view>

namespace headless::report {

/// The text with all characters made visible that would disturb the line: control characters and marks that
/// change the writing direction as \n, \t, \x1b or \u202e, bytes that are not UTF-8 as \xff. All other
/// characters stay. Applying it twice gives the same text.
std::string printable(std::string_view text);

/// The longest prefix of a printable text that fits into that many terminal columns. Every character beyond
/// ASCII counts as two columns, the widest that any character is.
std::string_view fitting(std::string_view text, std::size_t columns);

/// The number of terminal columns of a printable text, precise enough to align a table.
std::size_t display_columns(std::string_view text);

} // namespace headless::report
