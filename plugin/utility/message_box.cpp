#include "system/desktop.hpp"
#include "utility/message_catalogue.hpp"
#include "utility/mk_utility.hpp"

#include <filesystem>

namespace mk_utility {
namespace {

constexpr const char* icon_file = "/Applications/TARNBRIDGE Relay.app/Contents/Resources/appicon.icns";

int show(desktop::Dialog dialog) {
    dialog.title = mk_app::message_list ? mk_app::message_list->ERROR_TITLE() : mk_app_def::PROGRAM_NAME;
    std::error_code ignored;
    if (std::filesystem::is_regular_file(icon_file, ignored))
        dialog.icon = icon_file;
    return desktop::show(dialog);
}

} // namespace

int show_message_box_error(std::string message) {
    return show({.message = std::move(message), .title = {}, .is_error = true, .icon = {}});
}

int show_message_box_info(std::string message) {
    return show({.message = std::move(message), .title = {}, .icon = {}});
}

int show_message_box_info_YesNo(std::string message) {
    return show({.message = std::move(message), .title = {}, .asks_yes_or_no = true, .icon = {}});
}

} // namespace mk_utility
