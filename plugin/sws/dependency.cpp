#include "sws/dependency.hpp"

#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"
#include "system/desktop.hpp"
#include "utility/mk_utility.hpp"

namespace {

constexpr int yes_and_no_buttons = 4; ///< the host's message box types

} // namespace

void* dependency_manager::look_up(const char* name) {
    return reaper_plugin && reaper_plugin->GetFunc ? reaper_plugin->GetFunc(name) : nullptr;
}

void dependency_manager::open_url(const char* url) { desktop::open_web_address(text_or_empty(url)); }

void dependency_manager::assert_not_installed(const char* apiName, const char*, third_plugin plugin) {
    const mk_app::message* texts = mk_app::message_list.get();
    if (plugin != third_plugin::SWS || !texts)
        return;
    const std::string text = mk_utility::format(texts->MSG_DEPENDENCY_ERROR(), apiName,
                                                texts->SWS_PROGRAM_NAME(), texts->URL_SWS());
    if (call(ShowMessageBox, text.c_str(), texts->ERROR_TITLE(), yes_and_no_buttons) == desktop::button_yes)
        open_url(texts->URL_SWS());
}
