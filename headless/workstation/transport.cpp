#include "headless/workstation/transport.hpp"

namespace headless::workstation {
namespace {

enum PlayState : int { stopped = 0, playing = 1, paused = 2, recording = 4 };

} // namespace

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

} // namespace headless::workstation
