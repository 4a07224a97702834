#pragma once
// What the user's desktop does for the library: it shows messages, opens web addresses, knows the language.

#include <string>

namespace desktop {

/// A modal message box. All texts are UTF-8.
struct Dialog {
    std::string message;
    std::string title;
    bool asks_yes_or_no = false; ///< otherwise it has one button, "OK"
    bool is_error = false;
    std::string icon; ///< path of an icon file, or empty
};

// The host's button codes.
inline constexpr int button_yes = 6;
inline constexpr int button_no = 7;

/// Shows a message box and waits for its button.
/// @returns button_yes or button_no; without a question 0 after "OK", otherwise the status of the command that
/// shows the box; -1 if it could not be shown
int show(const Dialog& dialog);

/// Opens a web address in the user's browser. A failure is not reported.
void open_web_address(const std::string& address);

/// The user's language and country, as "ja_JP"; empty if they are not known.
std::string locale_name();

} // namespace desktop
