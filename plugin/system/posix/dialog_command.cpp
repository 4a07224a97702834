#include "system/posix/dialog_command.hpp"

#include <string_view>

namespace desktop {
namespace {

std::string with_replaced(std::string_view text, char from, std::string_view to) {
    std::string result;
    for (const char c : text)
        if (c == from)
            result += to;
        else
            result += c;
    return result;
}

// Closes the quoted string, adds a quote, and opens a quoted string again.
std::string inside_single_quotes(std::string_view text) { return with_replaced(text, '\'', R"('\'')"); }

std::string between(char quote, const std::string& text) { return quote + text + quote; }

std::string script_text(std::string_view text) {
    const std::string escaped = with_replaced(with_replaced(text, '\\', R"(\\)"), '"', R"(\")");
    return between('"', inside_single_quotes(escaped));
}

} // namespace

std::string shell_word(const std::string& text) { return between('\'', inside_single_quotes(text)); }

std::string osascript_command(const Dialog& dialog) {
    std::string command = "osascript -e '";
    if (dialog.asks_yes_or_no)
        command += "set B to button returned of (";
    command += "display dialog  " + script_text(dialog.message) + " ";
    command += "with title " + script_text(dialog.title) + " ";
    command += dialog.asks_yes_or_no ? R"(buttons{"Yes", "No"} default button "Yes" )"
                                     : R"(buttons{"OK"} default button "OK" )";
    if (!dialog.icon.empty())
        command += "with icon POSIX file " + script_text(dialog.icon);
    if (dialog.asks_yes_or_no)
        command += ")";
    return command + "'";
}

std::string zenity_command(const Dialog& dialog) {
    std::string command = "zenity ";
    if (dialog.asks_yes_or_no)
        command += "--question --ok-label=Yes --cancel-label=No";
    else
        command += dialog.is_error ? "--error --ok-label=OK" : "--info --ok-label=OK";
    command += " --no-markup --title=" + shell_word(dialog.title) + " --text=" + shell_word(dialog.message);
    if (!dialog.icon.empty())
        command += " --window-icon=" + shell_word(dialog.icon);
    return dialog.asks_yes_or_no ? command + " && echo Yes" : command;
}

} // namespace desktop
