#pragma once
// Compares, replaces and splits strings. Strings are sequences of bytes; where case is ignored, it is that of
// ASCII letters only. A null string counts as empty. No function needs the host.

#include "host_api/export.hpp"

#include <string>
#include <vector>

namespace mk_api::string {

/// Checks whether `checkString` occurs in `textString`, ignoring case. The empty string occurs in every
/// string.
/// @returns true
MK_EXPORT bool CheckIncludeString(const char* textString, const char* checkString, bool* checkOut);

} // namespace mk_api::string

namespace MK_FELSPAR {

/// Checks whether the strings are equal, ignoring case.
/// @returns true
MK_EXPORT bool CheckSameString(const char* textString, const char* checkString, bool* checkOut);

/// Checks whether `checkString` occurs in `textString`, byte for byte.
/// @returns true
MK_EXPORT bool CheckIncludePerfectString(const char* textString, const char* checkString, bool* checkOut);

/// Replaces every match of an ECMAScript regular expression. `replaceString` is an ECMAScript replacement
/// format ("$1", "$&", "$$"). The output is cut to `stringOut_sz` - 1 bytes.
/// @returns false, with the output unwritten, for an invalid pattern, and if matching would take too long for
/// the length of the text
MK_EXPORT bool ReplaceSearchString(const char* textString, const char* searchString,
                                   const char* replaceString, char* stringOut, int stringOut_sz);

/// Removes every space (byte 0x20 only). The output is cut to `stringOut_sz` - 1 bytes.
/// @returns true
MK_EXPORT bool DeleteBlankString(const char* testString, char* stringOut, int stringOut_sz);

/// Splits a string at every byte that is in `separators` and appends the pieces. Neighbouring separators have
/// an empty piece between them. A separator at the very end is not followed by one.
/// @returns true
MK_EXPORT bool GetStringSplitList(const std::string& text, const std::string& separators,
                                  std::vector<std::string>& pieces);

} // namespace MK_FELSPAR
