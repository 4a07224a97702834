#pragma once
// The host's two dialogs as questions on a terminal. Buttons have the host's numbers: 1 OK, 2 Cancel, 3
// Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No.

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// The button that stands for "go no further than needed": what a box answers when nobody can be asked.
/// OK for type 0, Ignore for 2, No for 4, Cancel for all others.
int default_button(int type);

/// "OK", "Cancel", ...
std::string_view button_name(int button);

/// Shows the text and asks until one of the buttons of that type is named, by its first letters.
/// @returns the button; the default one at the end of the input
int ask_button(std::istream& input, std::ostream& output, std::string_view text, std::string_view title,
               int type);

/// One field of an input form.
struct FormField {
    std::string caption;
    std::string value; ///< the initial value, and the answer in its place
};

/// Asks field by field; an empty answer keeps the initial value.
/// @returns false when the input ends before the last field: cancelled
bool ask_fields(std::istream& input, std::ostream& output, std::string_view title,
                std::vector<FormField>& fields);

} // namespace headless
