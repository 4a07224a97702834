// Host functions for the project as a whole: cursor, transport, folders, commands, registration.

#include "headless/base/configuration_folder.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/project/time_text.hpp"
#include "headless/workstation/commands.hpp"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <system_error>

namespace headless::functions {
namespace {

double get_cursor(const project::Project& project) { return project.cursor_seconds; }

// There is no view to move and no playback.
void set_cursor(project::Project& project, double seconds, bool, bool) {
    if (std::isfinite(seconds))
        project.cursor_seconds = std::max(seconds, 0.0);
}

double get_active_cursor(Workstation& workstation) { return get_cursor(workstation.project()); }

void set_active_cursor(Workstation& workstation, double seconds, bool moves_view, bool seeks) {
    set_cursor(workstation.project(), seconds, moves_view, seeks);
}

int get_play_state(Workstation& workstation) { return workstation.project().play_state; }

void go_to_end(Workstation& workstation) {
    workstation.project().cursor_seconds = workstation.project().end_seconds();
}

void run_command(Workstation& workstation, int number, int /*flag*/) {
    workstation::run_command(workstation, number);
}

void run_command_in(Workstation& workstation, int number, int flag, const project::Project&) {
    run_command(workstation, number, flag);
}

// There is only one project, which is also the active one.
project::Project* enumerate_projects(Workstation& workstation, int index, char* file, int file_size) {
    if (index != 0 && index != -1)
        return nullptr;
    workstation::copy_text(workstation.project().file.string(), file, file_size);
    return &workstation.project();
}

void get_project_name(const project::Project& project, char* buffer, int size) {
    workstation::copy_text(project.file.filename().string(), buffer, size);
}

double get_project_length(const project::Project& project) { return project.end_seconds(); }

double get_frame_rate(const project::Project& project, bool* drop_frame) {
    put(drop_frame, project.drop_frame);
    return project::exact_frame_rate(project);
}

void get_project_path(Workstation& workstation, char* buffer, int size) {
    workstation::copy_text(workstation.render_folder().string(), buffer, size);
}

std::string resource_folder() {
    std::error_code none;
    const std::filesystem::path folder = configuration_folder(this_platform(), process_environment);
    return ((folder.empty() ? std::filesystem::temp_directory_path(none) : folder) / "felspar").string();
}

const char* get_resource_path() {
    static const std::string folder = resource_folder();
    return folder.c_str();
}

void update_arrange() {} // nothing is drawn

int register_from_plugin(Workstation& workstation, const char* name, void* value) {
    return name && workstation.register_name(name, value) ? 1 : 0;
}

} // namespace

std::span<const workstation::HostFunction> project_functions() {
    static const workstation::HostFunction table[] = {
        {"GetCursorPositionEx", host_function<get_cursor>("proj", "The edit cursor's position in seconds")},
        {"SetEditCurPos2", host_function<set_cursor>("proj,time,moveview,seekplay", "Moves the edit cursor")},
        {"GetCursorPosition", host_function<get_active_cursor>("", "The edit cursor's position in seconds")},
        {"SetEditCurPos",
         host_function<set_active_cursor>("time,moveview,seekplay", "Moves the edit cursor")},
        {"GetPlayState", host_function<get_play_state>("", "1 playing, 2 paused, 4 recording, 0 stopped")},
        {"CSurf_GoEnd", host_function<go_to_end>("", "Moves the edit cursor to the project's end")},
        {"Main_OnCommandEx",
         host_function<run_command_in>("command,flag,proj", "Runs the workstation's command of that number")},
        {"Main_OnCommand",
         host_function<run_command>("command,flag", "Runs the workstation's command of that number")},
        {"EnumProjects", host_function<enumerate_projects>("idx,projfnOutOptional,projfnOutOptional_sz",
                                                           "The project and its file; -1 is the active one")},
        {"GetProjectName",
         host_function<get_project_name>("proj,bufOut,bufOut_sz",
                                         "The name of the project's file, empty for a project without one")},
        {"GetProjectLength",
         host_function<get_project_length>("proj", "Where the last item, marker or region ends, in seconds")},
        {"TimeMap_curFrameRate",
         host_function<get_frame_rate>("proj,dropFrameOutOptional", "The project's frames a second")},
        {"GetProjectPath",
         host_function<get_project_path>("bufOut,bufOut_sz", "The folder that recordings and renders go to")},
        {"GetResourcePath", host_function<get_resource_path>("", "The folder of the user's configuration")},
        {"UpdateArrange", host_function<update_arrange>("", "Nothing is drawn here: does nothing")},
        {"plugin_register", host_function<register_from_plugin>()},
    };
    return table;
}

} // namespace headless::functions
