#pragma once
// Small functions used throughout the library. None has state; all are exported.

#include "host_api/export.hpp"

#include <string>
#include <utility>

namespace mk_utility {

/// Copies `src` into a caller's buffer of `size` bytes, NUL included. A longer string is cut after `size` - 1
/// bytes, even inside a UTF-8 sequence. If the size is 0 or less or there is no buffer, does nothing.
MK_EXPORT void strcpy(char* dest, int size, std::string src);

/// Returns whether two strings are equal, ignoring the case of ASCII letters. A null string equals nothing.
MK_EXPORT bool Stricmp(const char* a, const char* b);

/// Rounds to `digits` decimals, 0 to 9, halves away from zero. For other digit counts returns the value
/// unchanged.
MK_EXPORT double round(double value, int digits);

/// Rounds towards plus infinity to `digits` decimals, 0 to 9. For other digit counts returns the value
/// unchanged.
MK_EXPORT double round_up(double value, int digits);

/// Converts decibels to the exponent of a linear volume: ln(10) / 20 truncated to nine digits, as in stored
/// volumes.
inline constexpr double nepers_per_decibel = 0.115129254;

/// Converts decibels to a linear volume; 0 dB is 1.0.
MK_EXPORT double to_reaper_volume(double decibels);

/// Converts a linear volume to decibels; 0 gives minus infinity.
MK_EXPORT double to_dB(double linear);

/// Returns whether `text` is at least one character followed by a match of the pattern `tail` (ECMAScript,
/// ignoring case).
/// @throws std::regex_error for an invalid pattern, and beyond the limits of `utility/safe_regex.hpp`
MK_EXPORT bool match_intail(const std::string& text, const std::string& tail);

/// Return a copy of the text. Texts of paths are UTF-8 on every platform (`common/path_text.hpp`).
MK_EXPORT std::string multi_to_utf8(const std::string& text);
MK_EXPORT std::string utf8_to_multi(const std::string& text);

/// Fills in the `%s` of a `printf` format. Returns an empty string if formatting fails.
MK_EXPORT std::string format(const char* format, const char* value);
MK_EXPORT std::string format(const char* format, const char* first, const char* second, const char* third);

/// Runs a shell command and waits for it to end.
/// @returns 0, or 1 if no shell could be started
MK_EXPORT int exec_command(std::string& command);

/// Splits a path at its last dot into the part before it and the part after it. Returns the whole path and an
/// empty string if there is no dot or the path contains a line break.
MK_EXPORT std::pair<std::string, std::string> split_extension(std::string path);

/// Shows a modal message and waits for its button.
/// @returns 0 after OK; -1 if it could not be shown; otherwise the exit status of the command that shows it
/// (Linux, macOS)
MK_EXPORT int show_message_box_error(std::string message);
MK_EXPORT int show_message_box_info(std::string message);

/// Asks a question and waits for the answer.
/// @returns 6 for yes, 7 for any other answer or none, -1 if the dialog could not be started
MK_EXPORT int show_message_box_info_YesNo(std::string message);

} // namespace mk_utility

/// Copies the version of the interface for hosts and scripts into `buffer`, cut to `size` - 1 bytes. Does
/// nothing if the size is 0 or less.
extern "C" MK_EXPORT void get_version(char* buffer, int size);
