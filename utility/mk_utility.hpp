#pragma once
// Small functions that the whole library shares. None holds state; all are exported.

#include "host/export.hpp"

#include <string>
#include <utility>

namespace mk_utility {

/// Copies `src` into a caller's buffer of `size` bytes, NUL included: longer texts are cut after `size` - 1
/// bytes, also inside a UTF-8 sequence. A size of 0 or less, or no buffer, leaves it alone.
MK_EXPORT void strcpy(char* dest, int size, std::string src);

/// Whether two texts are equal but for the case of ASCII letters. A null text equals nothing.
MK_EXPORT bool Stricmp(const char* a, const char* b);

/// Rounds to `digits` decimals, 0 to 9, halves away from zero. Other digit counts give the value as it is.
MK_EXPORT double round(double value, int digits);

/// Rounds towards plus infinity to `digits` decimals, 0 to 9. Other digit counts give the value as it is.
MK_EXPORT double round_up(double value, int digits);

/// What turns decibels into the exponent of a linear volume: ln(10) / 20 cut after nine digits, as stored
/// volumes are.
inline constexpr double nepers_per_decibel = 0.115129254;

/// Linear volume, 1.0 at 0 dB, for a volume in decibels.
MK_EXPORT double to_reaper_volume(double decibels);

/// Decibels of a linear volume; minus infinity for 0.
MK_EXPORT double to_dB(double linear);

/// Whether `text` is at least one character followed by what the pattern `tail` matches (ECMAScript, ignoring
/// case).
/// @throws std::regex_error for an invalid pattern, and for one of more than 1,024 bytes
MK_EXPORT bool match_intail(const std::string& text, const std::string& tail);

/// The borders between the host's UTF-8 texts and the file system's, which are the same on the platforms in
/// use.
MK_EXPORT std::string multi_to_utf8(const std::string& text);
MK_EXPORT std::string utf8_to_multi(const std::string& text);

/// The `printf` format with its `%s` filled in; empty when formatting fails.
MK_EXPORT std::string format(const char* format, const char* value);
MK_EXPORT std::string format(const char* format, const char* first, const char* second, const char* third);

/// Runs a shell command and waits for its end. @returns 0, or 1 when no shell could be started.
MK_EXPORT int exec_command(std::string& command);

/// The path up to its last dot, and what follows the dot. The whole path and nothing when there is no dot or
/// the path holds a line break.
MK_EXPORT std::pair<std::string, std::string> split_extension(std::string path);

/// Shows a modal message and waits for its button. @returns the dialog service's status, 0 after OK; -1 when
/// it could not be started.
MK_EXPORT int show_message_box_error(std::string message);
MK_EXPORT int show_message_box_info(std::string message);

/// Asks a question and waits for the answer. @returns 6 for yes, 7 for any other answer or none, -1 when the
/// dialog could not be started.
MK_EXPORT int show_message_box_info_YesNo(std::string message);

} // namespace mk_utility

/// Copies the library's version into `buffer`, cut to `size` - 1 bytes; a size of 0 or less leaves it alone.
extern "C" MK_EXPORT void get_version(char* buffer, int size);
