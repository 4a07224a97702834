#include "system/posix/dialog_command.hpp"

#include <cstdlib>

namespace desktop {

std::string dialog_command(const Dialog& dialog) { return zenity_command(dialog); }

std::string web_command(const std::string& address) { return "xdg-open " + shell_word(address); }

// The order of precedence that POSIX gives these variables. ja_JP.UTF-8@modifier names the locale ja_JP.
std::string locale_name() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable);
        if (!value || !*value)
            continue;
        const std::string name = value;
        return name.substr(0, name.find_first_of(".@"));
    }
    return {};
}

} // namespace desktop
