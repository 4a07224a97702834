// Host functions for the project as a whole: cursor, transport, folders, commands, registration.

#include "headless/functions/attributes.hpp"
#include "headless/functions/door.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/commands.hpp"
#include "headless/workstation/text.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>

namespace headless::functions {
namespace {

double get_cursor(workstation::Workstation& workstation, ReaProject* handle) {
    const project::Project* project = workstation.live(handle);
    return project ? project->cursor_seconds : 0.0;
}

// There is no view to move and no playback.
void set_cursor(workstation::Workstation& workstation, ReaProject* handle, double seconds, bool, bool) {
    project::Project* project = workstation.live(handle);
    if (project && std::isfinite(seconds))
        project->cursor_seconds = std::max(seconds, 0.0);
}

double get_active_cursor(workstation::Workstation& workstation) { return get_cursor(workstation, nullptr); }

void set_active_cursor(workstation::Workstation& workstation, double seconds, bool moves_view, bool seeks) {
    set_cursor(workstation, nullptr, seconds, moves_view, seeks);
}

double get_play_position(workstation::Workstation& workstation, ReaProject* handle) {
    const project::Project* project = workstation.live(handle);
    return project ? project->play_position_seconds : 0.0;
}

int get_play_state(workstation::Workstation& workstation) { return workstation.project().play_state; }

void go_to_end(workstation::Workstation& workstation) {
    workstation.project().cursor_seconds = workstation.project().end_seconds();
}

void run_command_in(workstation::Workstation& workstation, int number, int /*flag*/, ReaProject* handle) {
    if (workstation.live(handle))
        workstation::run_command(workstation, number);
}

void run_command_here(workstation::Workstation& workstation, int number, int flag) {
    run_command_in(workstation, number, flag, nullptr);
}

// There is only one project, which is also the active one.
ReaProject* enumerate_projects(workstation::Workstation& workstation, int index, char* file, int file_size) {
    if (index != 0 && index != -1)
        return nullptr;
    workstation::copy_text(workstation.project().file.native(), file, file_size);
    return workstation::Workstation::handle(workstation.project());
}

void get_project_name(workstation::Workstation& workstation, ReaProject* handle, char* buffer, int size) {
    if (const project::Project* project = workstation.live(handle))
        workstation::copy_text(project->file.filename().native(), buffer, size);
}

double get_project_length(workstation::Workstation& workstation, ReaProject* handle) {
    const project::Project* project = workstation.live(handle);
    return project ? project->end_seconds() : 0.0;
}

double get_frame_rate(workstation::Workstation& workstation, ReaProject* handle, bool* drop_frame) {
    const project::Project* project = workstation.live(handle);
    if (project && drop_frame)
        *drop_frame = project->drop_frame;
    return project ? project->frame_rate : 0.0;
}

void get_project_path(workstation::Workstation& workstation, char* buffer, int size) {
    workstation::copy_text(workstation.render_folder().native(), buffer, size);
}

bool get_set_project_string(workstation::Workstation& workstation, ReaProject* handle, const char* key,
                            char* text, bool is_set) {
    project::Project* project = workstation.live(handle);
    if (!project || !key || !text)
        return false;
    if (std::strcmp(key, "PROJECT_NAME") == 0 && !is_set) {
        workstation::copy_text(project->file.filename().native(), text, workstation::unsized_buffer_bytes);
        return true;
    }
    if (std::strcmp(key, "RECORD_PATH") != 0) {
        report_unknown_key(workstation, "GetSetProjectInfo_String", key);
        return false;
    }
    if (is_set)
        project->record_path = text;
    else
        workstation::copy_text(project->record_path.native(), text, workstation::unsized_buffer_bytes);
    return true;
}

std::string resource_folder() {
    if (const std::string configuration = workstation::to_string(std::getenv("XDG_CONFIG_HOME"));
        !configuration.empty())
        return configuration + "/felspar";
    const std::string home = workstation::to_string(std::getenv("HOME"));
    return home.empty() ? "/tmp/felspar" : home + "/.config/felspar";
}

const char* get_resource_path(workstation::Workstation&) {
    static const std::string folder = resource_folder();
    return folder.c_str();
}

void update_arrange(workstation::Workstation&) {} // nothing is drawn

int register_from_plugin(workstation::Workstation& workstation, const char* name, void* value) {
    return name && workstation.register_name(name, value) ? 1 : 0;
}

} // namespace

std::span<const workstation::HostFunction> project_functions() {
    static const workstation::HostFunction table[] = {
        host_function<get_cursor, "proj", "The edit cursor's position in seconds">("GetCursorPositionEx"),
        host_function<set_cursor, "proj,time,moveview,seekplay", "Moves the edit cursor">("SetEditCurPos2"),
        host_function<get_active_cursor, "", "The edit cursor's position in seconds">("GetCursorPosition"),
        host_function<set_active_cursor, "time,moveview,seekplay", "Moves the edit cursor">("SetEditCurPos"),
        host_function<get_play_position, "proj", "The play position in seconds">("GetPlayPositionEx"),
        host_function<get_play_state, "", "1 playing, 2 paused, 4 recording, 0 stopped">("GetPlayState"),
        host_function<go_to_end, "", "Moves the edit cursor to the project's end">("CSurf_GoEnd"),
        host_function<run_command_in, "command,flag,proj", "Runs a command: 40131, 40693 or 41999">(
            "Main_OnCommandEx"),
        host_function<run_command_here, "command,flag", "Runs a command: 40131, 40693 or 41999">(
            "Main_OnCommand"),
        host_function<enumerate_projects, "idx,projfnOutOptional,projfnOutOptional_sz",
                      "The project and its file; -1 is the active one">("EnumProjects"),
        host_function<get_project_name, "proj,bufOut,bufOut_sz",
                      "The name of the project's file, empty for a project without one">("GetProjectName"),
        host_function<get_project_length, "proj", "Where the last item, marker or region ends, in seconds">(
            "GetProjectLength"),
        host_function<get_frame_rate, "proj,dropFrameOutOptional", "The project's frames a second">(
            "TimeMap_curFrameRate"),
        host_function<get_project_path, "bufOut,bufOut_sz", "The folder that recordings and renders go to">(
            "GetProjectPath"),
        host_function<get_set_project_string, "project,desc,valuestrNeedBig,is_set",
                      "Gets or sets RECORD_PATH, gets PROJECT_NAME">("GetSetProjectInfo_String"),
        host_function<get_resource_path, "", "The folder of the user's configuration">("GetResourcePath"),
        host_function<update_arrange, "", "Nothing is drawn here: does nothing">("UpdateArrange"),
        host_function<register_from_plugin>("plugin_register"),
    };
    return table;
}

} // namespace headless::functions
