// Host functions for what the time line shows and plays: time selection, loop, play position, view and zoom.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

#include <algorithm>
#include <cmath>

namespace headless::functions {
namespace {

// There is no playback that could follow.
void get_set_time_range(project::Project& project, bool is_set, bool is_loop, double* start, double* end,
                        bool) {
    if (is_set && start && end) {
        const project::TimeRange range{*start, *end};
        is_loop ? project.set_loop_range(range) : project.set_time_selection(range);
    }
    const project::TimeRange range = is_loop ? project.loop_range() : project.time_selection();
    const bool is_empty = range.length_seconds() == 0.0;
    put(start, is_empty ? 0.0 : range.start_seconds);
    put(end, is_empty ? 0.0 : range.end_seconds);
}

void get_set_active_time_range(Workstation& workstation, bool is_set, bool is_loop, double* start,
                               double* end, bool seeks) {
    get_set_time_range(workstation.project(), is_set, is_loop, start, end, seeks);
}

// The end of the time selection that lies at the cursor goes along; without one a selection begins there.
void drag_time_selection(project::Project& project, double from, double to) {
    const project::TimeRange range = project.time_selection();
    const bool has_range = range.length_seconds() != 0.0;
    if (has_range && from == range.start_seconds)
        project.set_time_selection({to, range.end_seconds});
    else if (has_range && from == range.end_seconds)
        project.set_time_selection({range.start_seconds, to});
    else
        project.set_time_selection({from, to});
}

void move_cursor(Workstation& workstation, double by, bool drags_selection) {
    project::Project& project = workstation.project();
    if (!std::isfinite(by))
        return;
    const double from = project.cursor_seconds;
    project.cursor_seconds = std::max(from + by, 0.0);
    if (drags_selection)
        drag_time_selection(project, from, project.cursor_seconds);
}

double get_play_position(const project::Project& project) {
    return project.play_state == 0 ? project.cursor_seconds : project.play_position_seconds;
}

double get_active_play_position(Workstation& workstation) { return get_play_position(workstation.project()); }

int get_play_state(const project::Project& project) { return project.play_state; }

double get_play_rate(const project::Project& project) { return project.play_rate; }

// -1 asks, 0 and 1 set, anything else toggles.
int get_set_repeat(project::Project& project, int value) {
    if (value > 1)
        project.repeats = !project.repeats;
    else if (value >= 0)
        project.repeats = value == 1;
    return project.repeats ? 1 : 0;
}

int get_set_active_repeat(Workstation& workstation, int value) {
    return get_set_repeat(workstation.project(), value);
}

void set_view(project::Project& project, double start, double end) {
    constexpr double shortest_seconds = 1e-6;
    if (std::isfinite(start) && std::isfinite(end) && end - start >= shortest_seconds)
        project.view = {start, end};
}

void get_view(const project::Project& project, double* start, double* end) {
    put(start, project.view.start_seconds);
    put(end, project.view.end_seconds);
}

// Between two columns of pixels, or the whole view if both are 0.
void get_set_view(project::Project& project, bool is_set, int first_pixel, int last_pixel, double* start,
                  double* end) {
    const bool is_whole = first_pixel == 0 && last_pixel == 0;
    const double first = is_whole ? 0.0 : first_pixel;
    const double last = is_whole ? project::ArrangeView::width_pixels : last_pixel;
    if (is_set && start && end && last > first) {
        const double seconds_a_pixel = (*end - *start) / (last - first);
        const double view_start = *start - first * seconds_a_pixel;
        set_view(project, view_start,
                 is_whole ? *end : view_start + project::ArrangeView::width_pixels * seconds_a_pixel);
    }
    const project::ArrangeView& view = project.view;
    put(start, view.start_seconds + first / view.pixels_a_second());
    put(end, is_whole ? view.end_seconds : view.start_seconds + last / view.pixels_a_second());
}

double get_zoom(Workstation& workstation) { return workstation.project().view.pixels_a_second(); }

// Zooms around the cursor. How far a relative amount goes is the window's matter.
void adjust_zoom(Workstation& workstation, double amount, int is_absolute, bool, int) {
    project::Project& project = workstation.project();
    if (is_absolute == 0) {
        workstation.report_once({"adjustZoom: an amount relative to the present zoom does nothing here"});
        return;
    }
    if (!std::isfinite(amount) || amount <= 0.0)
        return;
    const project::ArrangeView& view = project.view;
    const double scale = view.pixels_a_second() / amount;
    const double cursor = std::clamp(project.cursor_seconds, view.start_seconds, view.end_seconds);
    const double start = std::max(cursor - (cursor - view.start_seconds) * scale, 0.0);
    set_view(project, start, start + project::ArrangeView::width_pixels / amount);
}

} // namespace

std::span<const workstation::HostFunction> view_functions() {
    static const workstation::HostFunction table[] = {
        {"GetSet_LoopTimeRange2",
         host_function<get_set_time_range>("proj,isSet,isLoop,startInOut,endInOut,allowautoseek",
                                           "Gets or sets the time selection or the loop points, in seconds; "
                                           "0, 0 for none")},
        {"GetSet_LoopTimeRange",
         host_function<get_set_active_time_range>("isSet,isLoop,startInOut,endInOut,allowautoseek",
                                                  "Gets or sets the time selection or the loop points, in "
                                                  "seconds; 0, 0 for none")},
        {"MoveEditCursor",
         host_function<move_cursor>("adjamt,dosel", "Moves the edit cursor by seconds, and with it the end "
                                                    "of the time selection")},
        {"GetPlayPosition",
         host_function<get_active_play_position>("", "The play position, or the cursor's while stopped")},
        {"GetPlayPosition2",
         host_function<get_active_play_position>("", "The play position, or the cursor's while stopped")},
        {"GetPlayPositionEx",
         host_function<get_play_position>("proj", "The play position, or the cursor's while stopped")},
        {"GetPlayPosition2Ex",
         host_function<get_play_position>("proj", "The play position, or the cursor's while stopped")},
        {"GetPlayStateEx",
         host_function<get_play_state>("proj", "1 playing, 2 paused, 4 recording, 0 stopped")},
        {"Master_GetPlayRate", host_function<get_play_rate>("project", "The playback rate of the project")},
        {"GetSetRepeat", host_function<get_set_active_repeat>(
                             "val", "Whether playback repeats; 0 and 1 set it, 2 toggles it")},
        {"GetSetRepeatEx",
         host_function<get_set_repeat>("proj,val", "Whether playback repeats; 0 and 1 set it, 2 toggles it")},
        {"GetSet_ArrangeView2",
         host_function<get_set_view>("proj,isSet,screen_x_start,screen_x_end,start_timeInOutOptional,"
                                     "end_timeInOutOptional",
                                     "Gets or sets the times in view, in seconds")},
        {"BR_GetArrangeView",
         host_function<get_view>("proj,startTimeOut,endTimeOut", "The times in view, in seconds")},
        {"BR_SetArrangeView",
         host_function<set_view>("proj,startTime,endTime", "Sets the times in view, in seconds")},
        {"GetHZoomLevel", host_function<get_zoom>("", "Pixels a second")},
        {"adjustZoom", host_function<adjust_zoom>("amt,forceset,doupd,centermode",
                                                  "Sets the pixels a second if forceset is not 0")},
    };
    return table;
}

} // namespace headless::functions
