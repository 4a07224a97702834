// Host functions for play, pause, stop and record. Nothing sounds here: they change the state that scripts ask
// for.

#include "headless/functions/adapter.hpp"
#include "headless/functions/tables.hpp"

namespace headless::functions {
namespace {

enum PlayState : int { stopped = 0, playing = 1, paused = 2, recording = 4 };

void play(project::Project& project) {
    if (project.play_state == stopped)
        project.play_position_seconds = project.cursor_seconds;
    project.play_state = playing | (project.play_state & recording);
}

void pause(project::Project& project) {
    if (project.play_state != stopped)
        project.play_state ^= playing | paused;
}

void stop(project::Project& project) {
    project.play_state = stopped;
    project.play_position_seconds = project.cursor_seconds;
}

void record(project::Project& project) {
    const bool is_recording = (project.play_state & recording) != 0;
    stop(project);
    if (!is_recording)
        project.play_state = playing | recording;
}

template <void (*Change)(project::Project&)>
void change_active(Workstation& workstation) {
    Change(workstation.project());
}

} // namespace

std::span<const workstation::HostFunction> transport_functions() {
    constexpr const char* play_help = "Sets the play state to playing; nothing sounds here";
    constexpr const char* pause_help = "Switches between playing and paused; nothing sounds here";
    constexpr const char* stop_help = "Sets the play state to stopped";
    static const workstation::HostFunction table[] = {
        {"OnPlayButton", host_function<change_active<play>>("", play_help)},
        {"OnPlayButtonEx", host_function<play>("proj", play_help)},
        {"CSurf_OnPlay", host_function<change_active<play>>("", play_help)},
        {"OnPauseButton", host_function<change_active<pause>>("", pause_help)},
        {"OnPauseButtonEx", host_function<pause>("proj", pause_help)},
        {"CSurf_OnPause", host_function<change_active<pause>>("", pause_help)},
        {"OnStopButton", host_function<change_active<stop>>("", stop_help)},
        {"OnStopButtonEx", host_function<stop>("proj", stop_help)},
        {"CSurf_OnStop", host_function<change_active<stop>>("", stop_help)},
        {"CSurf_OnRecord", host_function<change_active<record>>(
                               "", "Switches the play state of recording; nothing is recorded")},
    };
    return table;
}

} // namespace headless::functions
