// Host functions for the project as a whole: cursor, transport, folders, commands, registration.

#include "headless/host/commands.hpp"
#include "headless/host/door.hpp"
#include "headless/host/text.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

namespace headless {
namespace {

double get_cursor(Workstation& workstation, ReaProject* handle) {
    const Project* project = workstation.live(handle);
    return project ? project->cursor_seconds : 0.0;
}

// There is no view to move and nothing that plays.
void set_cursor(Workstation& workstation, ReaProject* handle, double seconds, bool, bool) {
    Project* project = workstation.live(handle);
    if (project && std::isfinite(seconds)) {
        project->cursor_seconds = std::max(seconds, 0.0);
    }
}

double get_play_position(Workstation& workstation, ReaProject* handle) {
    const Project* project = workstation.live(handle);
    return project ? project->play_position_seconds : 0.0;
}

int get_play_state(Workstation& workstation) { return workstation.project().play_state; }

void go_to_end(Workstation& workstation) {
    workstation.project().cursor_seconds = workstation.project().end_seconds();
}

void run_command_in(Workstation& workstation, int number, int /*flag*/, ReaProject* handle) {
    if (workstation.live(handle)) {
        run_command(workstation, number);
    }
}

double get_frame_rate(Workstation& workstation, ReaProject* handle, bool* drop_frame) {
    const Project* project = workstation.live(handle);
    if (project && drop_frame) {
        *drop_frame = project->drop_frame;
    }
    return project ? project->frame_rate : 0.0;
}

void get_project_path(Workstation& workstation, char* buffer, int size) {
    copy_text(workstation.render_folder().native(), buffer, size);
}

bool get_set_project_string(Workstation& workstation, ReaProject* handle, const char* key, char* text,
                            bool is_set) {
    Project* project = workstation.live(handle);
    if (!project || !key || !text || std::strcmp(key, "RECORD_PATH") != 0) {
        return false;
    }
    if (is_set) {
        project->record_path = text;
    } else {
        copy_text(project->record_path.native(), text, unsized_buffer_bytes);
    }
    return true;
}

std::string resource_folder() {
    if (const std::string configuration = to_string(std::getenv("XDG_CONFIG_HOME")); !configuration.empty()) {
        return configuration + "/felspar";
    }
    const std::string home = to_string(std::getenv("HOME"));
    return home.empty() ? "/tmp/felspar" : home + "/.config/felspar";
}

const char* get_resource_path(Workstation&) {
    static const std::string folder = resource_folder();
    return folder.c_str();
}

void update_arrange(Workstation&) {} // nothing is drawn

int register_from_plugin(Workstation& workstation, const char* name, void* value) {
    return name && workstation.register_name(name, value) ? 1 : 0;
}

} // namespace

std::span<const HostFunction> project_functions() {
    static const HostFunction table[] = {
        host_function<get_cursor>("GetCursorPositionEx"),
        host_function<set_cursor>("SetEditCurPos2"),
        host_function<get_play_position>("GetPlayPositionEx"),
        host_function<get_play_state>("GetPlayState"),
        host_function<go_to_end>("CSurf_GoEnd"),
        host_function<run_command_in>("Main_OnCommandEx"),
        host_function<get_frame_rate>("TimeMap_curFrameRate"),
        host_function<get_project_path>("GetProjectPath"),
        host_function<get_set_project_string>("GetSetProjectInfo_String"),
        host_function<get_resource_path>("GetResourcePath"),
        host_function<update_arrange>("UpdateArrange"),
        host_function<register_from_plugin>("plugin_register"),
    };
    return table;
}

} // namespace headless
