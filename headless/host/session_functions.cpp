// Host functions for the console, undo and the screen, which scripts call around their work. Where there is
// nothing to do the help says so.

#include "headless/host/door.hpp"
#include "headless/host/text.hpp"

#include <chrono>
#include <filesystem>
#include <iostream>
#include <string>

namespace headless {
namespace {

void show_console_message(Workstation&, const char* text) { std::cout << to_string(text) << std::flush; }

void nothing(Workstation&) {}
void nothing_in(Workstation&, ReaProject*) {}
void nothing_named(Workstation&, const char*, int) {}
void nothing_named_in(Workstation&, ReaProject*, const char*, int) {}
void nothing_counted(Workstation&, int) {}
void nothing_told(Workstation&, bool) {}

const char* get_version(Workstation&) { return "6.19/felspar"; }

// The word for every system but macOS and Windows.
const char* get_system(Workstation&) { return "Other"; }

double seconds_now(Workstation&) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

bool file_exists(Workstation&, const char* path) {
    std::error_code error;
    return std::filesystem::is_regular_file(to_string(path), error);
}

bool is_valid_handle(Workstation& workstation, void* handle, const char* type) {
    return handle && workstation.is_live(to_string(type), handle).value_or(false);
}

bool is_valid_handle_in(Workstation& workstation, ReaProject* project, void* handle, const char* type) {
    return workstation.live(project) && is_valid_handle(workstation, handle, type);
}

} // namespace

std::span<const HostFunction> session_functions() {
    static const HostFunction table[] = {
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
        host_function<file_exists, "path", "Whether there is a regular file of that path">("file_exists"),
        host_function<is_valid_handle, "pointer,ctypename",
                      "Whether it is the handle of a living object of that type, such as MediaTrack*">(
            "ValidatePtr"),
        host_function<is_valid_handle_in, "proj,pointer,ctypename",
                      "Whether it is the handle of a living object of that type, such as MediaTrack*">(
            "ValidatePtr2"),
    };
    return table;
}

} // namespace headless
