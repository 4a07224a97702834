#pragma once
// The host's two dialogs as questions on a terminal. Buttons have the host's numbers: 1 OK, 2 Cancel, 3
// Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No.

#include <cstddef>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace headless::workstation {

/// The answer of a message box if nobody can be asked: the button that changes least. OK for type 0, Ignore
/// for 2, No for 4, Cancel for all others.
int default_button(int type);

/// "OK", "Cancel", ...
std::string_view button_name(int button);

/// The button of that type whose name begins with the answer, in any letter case.
std::optional<int> button_for(std::string_view answer, int type);

/// Shows the text and asks until one of the buttons of that type is named, by its first letters.
/// @returns the button; the default one at the end of the input
int ask_button(std::istream& input, std::ostream& output, std::string_view text, std::string_view title,
               int type);

/// One field of an input form.
struct FormField {
    std::string caption;
    std::string value; ///< the initial value, replaced by the answer
};

/// Asks field by field; an empty answer keeps the initial value.
/// @returns false if the input ends before the last field, which cancels the form
bool ask_fields(std::istream& input, std::ostream& output, std::string_view title,
                std::vector<FormField>& fields);

/// Answers given in advance, by the title of the dialog: a button's name, or the values of a form as a script
/// would receive them. Several answers for one title are used in order, and the last one stays in effect.
class DialogAnswers {
public:
    void add(const std::string& title, std::string answer) { answers_[title].answers.push_back(answer); }

    std::optional<std::string> next(const std::string& title);

    /// Titles of dialogs that were never opened.
    std::vector<std::string> never_asked() const;

private:
    struct Answers {
        std::vector<std::string> answers;
        std::size_t times_asked = 0;
    };
    std::map<std::string, Answers> answers_;
};

} // namespace headless::workstation
