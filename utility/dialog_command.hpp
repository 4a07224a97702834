#pragma once
// The shell commands that show a modal message box: the script runner of macOS, and zenity elsewhere.

#include <string>

namespace mk_utility {

struct Dialog {
    std::string message;
    std::string title;
    bool asks_yes_or_no = false; ///< else it has one button, "OK"
    bool is_error = false;
    std::string icon; ///< path of an icon file; empty for none
};

/// Either command prints "Yes" when the question was answered so. Quotes in message and title are escaped, so
/// that any text is shown as it is; texts without quotes and backslashes stand in the command as they are.
std::string osascript_command(const Dialog& dialog);
std::string zenity_command(const Dialog& dialog);

} // namespace mk_utility
