#pragma once
// The parts of an ECMAScript pattern that match one byte: escapes, and sets in brackets.

#include "utility/pattern_text.hpp"
#include "utility/regex_bytes.hpp"

#include <cstddef>
#include <string>

namespace mk_utility {

/// An escape sequence without its backslash.
struct Escape {
    enum class Kind { byte, set, word_boundary, no_word_boundary, back_reference };
    Kind kind = Kind::byte;
    char byte = '\0';
    ByteSet set = {};
    std::size_t group = 0;
};

/// Reads an escape whose backslash has been taken.
/// @throws std::regex_error if it ends too soon
Escape read_escape(PatternText& text, bool in_brackets);

/// Reads a set in brackets whose "[" has been taken.
/// @returns the bytes of the set, written as a pattern
/// @throws std::regex_error if it is not a valid set
std::string read_brackets(PatternText& text);

} // namespace mk_utility
