// Host functions for the console, undo and the screen, which scripts call around their work. If a function
// does nothing, its help says so.

#include "headless/functions/adapter.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/text.hpp"

#include <chrono>
#include <iostream>
#include <string>

namespace headless::functions {
namespace {

void show_console_message(const char* text) { std::cout << workstation::to_string(text) << std::flush; }

template <class... A>
void do_nothing(A...) {}

const char* get_version() { return "6.19/felspar"; }

// The name for every system other than macOS and Windows.
const char* get_system() { return "Other"; }

double seconds_now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool is_function(Workstation& workstation, const char* name) { return name && workstation.function(name); }

workstation::ExtensionStates::key_type state_key(const char* section, const char* key) {
    return {workstation::to_string(section), workstation::to_string(key)};
}

const char* get_state(Workstation& workstation, const char* section, const char* key) {
    const auto state = workstation.extension_states.find(state_key(section, key));
    return state == workstation.extension_states.end() ? "" : state->second.c_str();
}

bool has_state(Workstation& workstation, const char* section, const char* key) {
    return workstation.extension_states.contains(state_key(section, key));
}

void set_state(Workstation& workstation, const char* section, const char* key, const char* value, bool) {
    workstation.extension_states[state_key(section, key)] = workstation::to_string(value);
}

void delete_state(Workstation& workstation, const char* section, const char* key, bool) {
    workstation.extension_states.erase(state_key(section, key));
}

bool is_valid_handle(Workstation& workstation, void* handle, const char* type) {
    return handle && workstation.is_live(workstation::to_string(type), handle).value_or(false);
}

bool is_valid_handle_in(Workstation& workstation, const project::Project&, void* handle, const char* type) {
    return is_valid_handle(workstation, handle, type);
}

} // namespace

std::span<const workstation::HostFunction> session_functions() {
    static const workstation::HostFunction table[] = {
        {"ShowConsoleMsg", host_function<show_console_message>("msg", "Writes to the standard output")},
        {"ClearConsole", host_function<do_nothing<>>("", "The standard output stays as it is: does nothing")},
        {"Undo_BeginBlock", host_function<do_nothing<>>("", "There is no undo here: does nothing")},
        {"Undo_BeginBlock2",
         host_function<do_nothing<ReaProject*>>("proj", "There is no undo here: does nothing")},
        {"Undo_EndBlock", host_function<do_nothing<const char*, int>>("descchange,extraflags",
                                                                      "There is no undo here: does nothing")},
        {"Undo_EndBlock2", host_function<do_nothing<ReaProject*, const char*, int>>(
                               "proj,descchange,extraflags", "There is no undo here: does nothing")},
        {"PreventUIRefresh",
         host_function<do_nothing<int>>("prevent_count", "Nothing is drawn here: does nothing")},
        {"UpdateTimeline", host_function<do_nothing<>>("", "Nothing is drawn here: does nothing")},
        {"TrackList_AdjustWindows",
         host_function<do_nothing<bool>>("isMinor", "Nothing is drawn here: does nothing")},
        {"GetAppVersion",
         host_function<get_version>("", "The version of the workstation whose functions these are")},
        {"GetOS", host_function<get_system>("", "The kind of operating system")},
        {"time_precise", host_function<seconds_now>("", "Seconds of a clock that never goes back")},
        {"APIExists", host_function<is_function>("function_name", "Whether scripts or plug-ins can call it")},
        {"GetExtState", host_function<get_state>("section,key", "What a script has set, empty if none has")},
        {"HasExtState", host_function<has_state>("section,key", "Whether a script has set it")},
        {"SetExtState",
         host_function<set_state>("section,key,value,persist",
                                  "Sets a text for other scripts; kept while the workstation runs")},
        {"DeleteExtState", host_function<delete_state>("section,key,persist", "Drops what a script has set")},
        {"ValidatePtr", host_function<is_valid_handle>(
                            "pointer,ctypename",
                            "Whether it is the handle of a living object of that type, such as MediaTrack*")},
        {"ValidatePtr2",
         host_function<is_valid_handle_in>(
             "proj,pointer,ctypename",
             "Whether it is the handle of a living object of that type, such as MediaTrack*")},
    };
    return table;
}

} // namespace headless::functions
