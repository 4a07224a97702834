#pragma once
// The shell commands that show a modal message box: osascript on macOS, zenity elsewhere.

#include <string>

namespace mk_utility {

struct Dialog {
    std::string message;
    std::string title;
    bool asks_yes_or_no = false; ///< otherwise it has one button, "OK"
    bool is_error = false;
    std::string icon; ///< path of an icon file, or empty
};

/// Each command prints "Yes" if the user answers the question with yes. Quotes in message and title are
/// escaped, so that any text is shown unchanged. Texts without quotes and backslashes appear in the command
/// unchanged.
std::string osascript_command(const Dialog& dialog);
std::string zenity_command(const Dialog& dialog);

} // namespace mk_utility
