#pragma once
// Sets of bytes that a pattern names: classes such as \w or [:alpha:], and collating names such as
// [.hyphen.]. Letters are those of ASCII, whatever the locale.

#include <bitset>
#include <optional>
#include <string>
#include <string_view>

namespace mk_utility {

using ByteSet = std::bitset<256>;

constexpr unsigned char byte_of(char character) { return static_cast<unsigned char>(character); }

/// Returns the bytes of a class: "d", "s", "w" or a name such as "alpha", ignoring case.
std::optional<ByteSet> class_named(std::string_view name);

/// Returns the byte of a collating name: a letter, or a POSIX character name such as "hyphen".
std::optional<char> character_named(std::string_view name);

/// Writes a byte as a pattern that matches it literally.
std::string written_byte(char byte);

/// Writes a set as a pattern in brackets. For an empty set, writes a pattern that never matches.
std::string written_set(const ByteSet& bytes, bool negated);

} // namespace mk_utility
