#pragma once
// Strings written to buffers of a given size, and file names made from names.

#include <cstddef>
#include <string>
#include <string_view>

namespace headless::workstation {

/// Buffers passed without a size hold at least this many bytes.
constexpr int unsized_buffer_bytes = 1024;

/// The longest prefix of `text` that has at most `bytes` bytes and does not end inside a UTF-8 character.
std::string_view utf8_prefix(std::string_view text, std::size_t bytes);

/// Writes `text`, truncated to `size - 1` bytes, and a NUL. Writes nothing if the buffer is null or the size
/// is 0 or less.
void copy_text(std::string_view text, char* buffer, int size);

/// An empty string for null.
std::string to_string(const char* text);

/// The name without the extension of an audio file, if it has one: "line.final.WAV" gives "line.final".
std::string_view without_audio_extension(std::string_view name);

/// A file name for `stem` + `ending`. Slashes, control characters, and backticks together with both other
/// quotes become '_', and `stem` is truncated so that the name has at most 255 bytes. An empty stem becomes
/// "untitled".
std::string file_name_for(std::string_view stem, std::string_view ending);

} // namespace headless::workstation
