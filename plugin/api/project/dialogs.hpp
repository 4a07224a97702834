#pragma once
// The host's message box and input form. Both wait for the user.

#include "host_api/export.hpp"

#include <string>
#include <vector>

namespace mk_api::UI {

/// Shows a message box.
/// @param windowType           the buttons, one of the host's numbers from 0 to 6
/// @param pushedButtonTypeOut  the host's code of the button pressed
/// @returns false for Cancel. For any other type it shows no box and returns false with the output unwritten
MK_EXPORT bool ShowMessageBox_Ex(const char* messageStr, const char* windowTitleStr, int windowType,
                                 int* pushedButtonTypeOut);

} // namespace mk_api::UI

namespace MK_FELSPAR {

/// Shows a form and appends the answers, or what the form held if the user cancels it. An answer with a comma
/// counts as two. If the last answer is empty, no entry is added for it.
/// @param captions  in the host's format
/// @param defaults  joined by commas; only the first 1,023 bytes count
/// @returns whether the user confirmed
MK_EXPORT bool GetUserInputList(const std::string& title, int fieldCount, const std::string& captions,
                                const std::string& defaults, std::vector<std::string>& answers);

} // namespace MK_FELSPAR
