#pragma once
// Comparing, replacing and splitting texts. Texts are byte strings; where case is ignored, only ASCII letters
// have it. A null text is the empty one. No function needs the host.

#include "host/export.hpp"

#include <string>
#include <vector>

namespace mk_api::string {

/// Whether `checkString` occurs in `textString`, ignoring case; the empty text occurs in every text. @returns
/// true
MK_EXPORT bool CheckIncludeString(const char* textString, const char* checkString, bool* checkOut);

} // namespace mk_api::string

namespace MK_FELSPAR {

/// Whether the texts are equal, ignoring case. @returns true
MK_EXPORT bool CheckSameString(const char* textString, const char* checkString, bool* checkOut);

/// Whether `checkString` occurs in `textString`, byte for byte. @returns true
MK_EXPORT bool CheckIncludePerfectString(const char* textString, const char* checkString, bool* checkOut);

/// Replaces every match of an ECMAScript regular expression by what an ECMAScript replacement format ("$1",
/// "$&",
/// "$$") makes of it. The output is cut to `stringOut_sz` - 1 bytes.
/// @returns false, with the output unwritten, for an invalid pattern, and where matching would take out of
/// all proportion to the text
MK_EXPORT bool ReplaceSearchString(const char* textString, const char* searchString,
                                   const char* replaceString, char* stringOut, int stringOut_sz);

/// Removes every blank, which is the byte 0x20 alone. The output is cut to `stringOut_sz` - 1 bytes. @returns
/// true
MK_EXPORT bool DeleteBlankString(const char* testString, char* stringOut, int stringOut_sz);

/// Appends the pieces of a text that end at any byte of `separators`, or at the text's end. Pieces between
/// neighbouring separators are empty; none follows a separator at the very end. @returns true
MK_EXPORT bool GetStringSplitList(const std::string& text, const std::string& separators,
                                  std::vector<std::string>& pieces);

} // namespace MK_FELSPAR
