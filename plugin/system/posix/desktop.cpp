#include "system/desktop.hpp"

#include "system/posix/dialog_command.hpp"
#include "system/posix/shell_answer.hpp"
#include "system/shell.hpp"

namespace desktop {

int show(const Dialog& dialog) {
    constexpr int cannot_start = -1;
    const std::optional<shell::Answer> answer = shell::ask(dialog_command(dialog));
    if (!answer)
        return cannot_start;
    if (!dialog.asks_yes_or_no)
        return answer->status;
    return answer->first_word == "Yes" ? button_yes : button_no;
}

void open_web_address(const std::string& address) { shell::run(web_command(address)); }

} // namespace desktop
