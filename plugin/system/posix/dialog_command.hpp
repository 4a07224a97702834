#pragma once
// The shell commands of desktops: a modal message box by osascript on macOS and by zenity elsewhere, and the
// opening of a web address.

#include "system/desktop.hpp"

#include <string>

namespace desktop {

/// The two commands print "Yes" if the user answers the question with yes. Quotes in message and title are
/// escaped, so that any text is shown unchanged. Texts without quotes and backslashes appear in the command
/// unchanged.
std::string osascript_command(const Dialog& dialog);
std::string zenity_command(const Dialog& dialog);

/// The commands of the system that the library is built for.
std::string dialog_command(const Dialog& dialog);
std::string web_command(const std::string& address);

/// Quotes a text, so that the shell takes it as one word as it stands.
std::string shell_word(const std::string& text);

} // namespace desktop
