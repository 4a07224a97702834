// Host functions for the console, undo and the screen, which scripts call around their work. If a function
// does nothing, its help says so.

#include "headless/functions/door.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/text.hpp"

#include <chrono>
#include <iostream>
#include <string>

namespace headless::functions {
namespace {

void show_console_message(workstation::Workstation&, const char* text) {
    std::cout << workstation::to_string(text) << std::flush;
}

void nothing(workstation::Workstation&) {}
void nothing_in(workstation::Workstation&, ReaProject*) {}
void nothing_named(workstation::Workstation&, const char*, int) {}
void nothing_named_in(workstation::Workstation&, ReaProject*, const char*, int) {}
void nothing_counted(workstation::Workstation&, int) {}
void nothing_told(workstation::Workstation&, bool) {}

const char* get_version(workstation::Workstation&) { return "6.19/felspar"; }

// The name for every system other than macOS and Windows.
const char* get_system(workstation::Workstation&) { return "Other"; }

double seconds_now(workstation::Workstation&) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool is_function(workstation::Workstation& workstation, const char* name) {
    return name && workstation.function(name);
}

workstation::ExtensionStates::key_type state_key(const char* section, const char* key) {
    return {workstation::to_string(section), workstation::to_string(key)};
}

const char* get_state(workstation::Workstation& workstation, const char* section, const char* key) {
    const auto state = workstation.extension_states.find(state_key(section, key));
    return state == workstation.extension_states.end() ? "" : state->second.c_str();
}

bool has_state(workstation::Workstation& workstation, const char* section, const char* key) {
    return workstation.extension_states.contains(state_key(section, key));
}

void set_state(workstation::Workstation& workstation, const char* section, const char* key, const char* value,
               bool) {
    workstation.extension_states[state_key(section, key)] = workstation::to_string(value);
}

void delete_state(workstation::Workstation& workstation, const char* section, const char* key, bool) {
    workstation.extension_states.erase(state_key(section, key));
}

bool is_valid_handle(workstation::Workstation& workstation, void* handle, const char* type) {
    return handle && workstation.is_live(workstation::to_string(type), handle).value_or(false);
}

bool is_valid_handle_in(workstation::Workstation& workstation, ReaProject* project, void* handle,
                        const char* type) {
    return workstation.live(project) && is_valid_handle(workstation, handle, type);
}

} // namespace

std::span<const workstation::HostFunction> session_functions() {
    static const workstation::HostFunction table[] = {
        host_function<show_console_message, "msg", "Writes to the standard output">("ShowConsoleMsg"),
        host_function<nothing, "", "The standard output stays as it is: does nothing">("ClearConsole"),
        host_function<nothing, "", "There is no undo here: does nothing">("Undo_BeginBlock"),
        host_function<nothing_in, "proj", "There is no undo here: does nothing">("Undo_BeginBlock2"),
        host_function<nothing_named, "descchange,extraflags", "There is no undo here: does nothing">(
            "Undo_EndBlock"),
        host_function<nothing_named_in, "proj,descchange,extraflags", "There is no undo here: does nothing">(
            "Undo_EndBlock2"),
        host_function<nothing_counted, "prevent_count", "Nothing is drawn here: does nothing">(
            "PreventUIRefresh"),
        host_function<nothing, "", "Nothing is drawn here: does nothing">("UpdateTimeline"),
        host_function<nothing_told, "isMinor", "Nothing is drawn here: does nothing">(
            "TrackList_AdjustWindows"),
        host_function<get_version, "", "The version of the workstation whose functions these are">(
            "GetAppVersion"),
        host_function<get_system, "", "The kind of operating system">("GetOS"),
        host_function<seconds_now, "", "Seconds of a clock that never goes back">("time_precise"),
        host_function<is_function, "function_name", "Whether scripts or plug-ins can call it">("APIExists"),
        host_function<get_state, "section,key", "What a script has set, empty if none has">("GetExtState"),
        host_function<has_state, "section,key", "Whether a script has set it">("HasExtState"),
        host_function<set_state, "section,key,value,persist",
                      "Sets a text for other scripts; kept while the workstation runs">("SetExtState"),
        host_function<delete_state, "section,key,persist", "Drops what a script has set">("DeleteExtState"),
        host_function<is_valid_handle, "pointer,ctypename",
                      "Whether it is the handle of a living object of that type, such as MediaTrack*">(
            "ValidatePtr"),
        host_function<is_valid_handle_in, "proj,pointer,ctypename",
                      "Whether it is the handle of a living object of that type, such as MediaTrack*">(
            "ValidatePtr2"),
    };
    return table;
}

} // namespace headless::functions
