#include "utility/dialog_command.hpp"
#include "utility/message_catalogue.hpp"
#include "utility/mk_utility.hpp"

#include <cstdio>
#include <filesystem>
#include <string_view>

namespace mk_utility {
namespace {

constexpr const char* icon_file = "/Applications/TARNBRIDGE Relay.app/Contents/Resources/appicon.icns";
constexpr int cannot_start = -1;
constexpr int yes = 6; ///< the host's button codes
constexpr int no = 7;

FILE* show(Dialog dialog) {
    dialog.title = mk_app::message_list ? mk_app::message_list->ERROR_TITLE() : mk_app_def::PROGRAM_NAME;
    std::error_code ignored;
    if (std::filesystem::is_regular_file(icon_file, ignored))
        dialog.icon = icon_file;
#ifdef __APPLE__
    const std::string command = osascript_command(dialog);
#else
    const std::string command = zenity_command(dialog);
#endif
    return popen(command.c_str(), "r");
}

int show_and_wait(Dialog dialog) {
    FILE* answer = show(std::move(dialog));
    return answer ? pclose(answer) : cannot_start;
}

} // namespace

int show_message_box_error(std::string message) {
    return show_and_wait({.message = std::move(message), .title = {}, .is_error = true, .icon = {}});
}

int show_message_box_info(std::string message) {
    return show_and_wait({.message = std::move(message), .title = {}, .icon = {}});
}

int show_message_box_info_YesNo(std::string message) {
    FILE* answer = show({.message = std::move(message), .title = {}, .asks_yes_or_no = true, .icon = {}});
    if (!answer)
        return cannot_start;
    char word[8] = "";
    const bool said_yes = std::fscanf(answer, "%7s", word) == 1 && std::string_view(word) == "Yes";
    pclose(answer);
    return said_yes ? yes : no;
}

} // namespace mk_utility
