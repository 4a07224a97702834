#include "system/posix/dialog_command.hpp"
#include "system/posix/shell_answer.hpp"

namespace desktop {

std::string dialog_command(const Dialog& dialog) { return osascript_command(dialog); }

std::string web_command(const std::string& address) { return "open " + shell_word(address); }

// ja_JP@calendar=japanese names the locale ja_JP.
std::string locale_name() {
    const std::optional<shell::Answer> answer = shell::ask("defaults read -g AppleLocale");
    return answer ? answer->first_word.substr(0, answer->first_word.find('@')) : std::string();
}

} // namespace desktop
