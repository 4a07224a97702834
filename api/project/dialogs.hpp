#pragma once
// The host's message box and input form. Both wait for the user.

#include "host/export.hpp"

#include <string>
#include <vector>

namespace mk_api::UI {

/// Shows a message box.
/// @param windowType           the buttons, by the host's numbers from 0 to 6
/// @param pushedButtonTypeOut  the host's code of the button pressed
/// @returns false for Cancel, and for another type, with no box shown and the output unwritten
MK_EXPORT bool ShowMessageBox_Ex(const char* messageStr, const char* windowTitleStr, int windowType,
                                 int* pushedButtonTypeOut);

} // namespace mk_api::UI

namespace MK_FELSPAR {

/// Shows a form and appends the answers, or what the form held when it was cancelled. An answer with a comma
/// counts as two, and no entry stands for a last one that is empty.
/// @param captions  by the host's conventions
/// @param defaults  joined by commas; at most 1,023 bytes count
/// @returns whether the user confirmed
MK_EXPORT bool GetUserInputList(const std::string& title, int fieldCount, const std::string& captions,
                                const std::string& defaults, std::vector<std::string>& answers);

} // namespace MK_FELSPAR
