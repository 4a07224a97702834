// Host functions for times as users read and type them, and for the grid.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/project/grid_lines.hpp"
#include "headless/project/time_text.hpp"

#include <algorithm>
#include <cmath>
#include <string>

namespace headless::functions {
namespace {

// The project's ruler for a number that is none, which is reported.
project::RulerMode ruler(Workstation& workstation, int number) {
    const project::Project& project = workstation.project();
    if (const auto mode = project::ruler_of(project, number))
        return *mode;
    workstation.report_once({"times: the unit " + std::to_string(number) + " is not known"});
    return project.ruler_mode;
}

double project_start(const project::Project& project, bool rounds_to_frame) {
    const double rate = project::exact_frame_rate(project);
    return rounds_to_frame ? std::round(project.start_seconds * rate) / rate : project.start_seconds;
}

void format_clock(double seconds, char* buffer, int size) {
    workstation::copy_text(project::clock_text(seconds), buffer, size);
}

void format_position(Workstation& workstation, double seconds, char* buffer, int size, int mode) {
    workstation::copy_text(project::position_text(workstation.project(), seconds, ruler(workstation, mode)),
                           buffer, size);
}

void format_length(Workstation& workstation, double seconds, char* buffer, int size, double from_seconds,
                   int mode) {
    workstation::copy_text(
        project::length_text(workstation.project(), seconds, from_seconds, ruler(workstation, mode)), buffer,
        size);
}

double parse_clock(const char* text) { return project::parse_clock(workstation::to_string(text)); }

double parse_position(Workstation& workstation, const char* text, int mode) {
    return project::parse_position(workstation.project(), workstation::to_string(text),
                                   ruler(workstation, mode));
}

double parse_length(Workstation& workstation, const char* text, double from_seconds, int mode) {
    return project::parse_length(workstation.project(), workstation::to_string(text), from_seconds,
                                 ruler(workstation, mode));
}

constexpr double quarters_a_whole_note = 4.0;

project::Grid::Swing swing_of(int number) {
    if (number == static_cast<int>(project::Grid::Swing::measures))
        return project::Grid::Swing::measures;
    return number == 0 ? project::Grid::Swing::off : project::Grid::Swing::on;
}

bool set_division(project::Grid& grid, double whole_notes) {
    const bool is_division = std::isfinite(whole_notes) && whole_notes > 0.0;
    if (is_division)
        grid.division_quarters = whole_notes * quarters_a_whole_note;
    return is_division;
}

// Whether lines are a division apart: the measure grid has none.
int get_set_grid(project::Project& project, bool is_set, double* division, int* swing, double* amount) {
    project::Grid& grid = project.grid;
    if (is_set) {
        if (division)
            set_division(grid, *division);
        if (swing)
            grid.swing = swing_of(*swing);
        if (amount && std::isfinite(*amount))
            grid.swing_amount = std::clamp(*amount, -1.0, 1.0);
    }
    put(division, grid.division_quarters / quarters_a_whole_note);
    put(swing, static_cast<int>(grid.swing));
    put(amount, grid.swing_amount);
    return grid.swing == project::Grid::Swing::measures ? 0 : 1;
}

void set_grid(project::Project& project, double division) { set_division(project.grid, division); }

double snap(const project::Project& project, double seconds) { return project::snapped(project, seconds); }

template <double (*line)(const project::Project&, double)>
double grid_line(Workstation& workstation, double seconds) {
    return line(workstation.project(), seconds);
}

} // namespace

std::span<const workstation::HostFunction> time_functions() {
    static const workstation::HostFunction table[] = {
        {"GetProjectTimeOffset",
         host_function<project_start>("proj,rndframe", "The time that is shown at position 0, in seconds")},
        {"format_timestr",
         host_function<format_clock>("tpos,bufOptional,bufOptional_sz", "Seconds as hours:minutes:seconds")},
        {"format_timestr_pos",
         host_function<format_position>(
             "tpos,buf,buf_sz,modeoverride",
             "A position as text: -1 in the project's unit, 0 time, 1 beats and time, 2 beats, 3 seconds, "
             "4 samples, 5 timecode, 8 frames")},
        {"format_timestr_len",
         host_function<format_length>("tpos,buf,buf_sz,offset,modeoverride",
                                      "A length that begins at `offset` as text, in the units of positions")},
        {"parse_timestr", host_function<parse_clock>("buf", "Seconds of hours:minutes:seconds")},
        {"parse_timestr_pos",
         host_function<parse_position>("buf,modeoverride", "The position of a text, in seconds")},
        {"parse_timestr_len", host_function<parse_length>("buf,offset,modeoverride",
                                                          "The seconds of a length that begins at `offset`")},
        {"GetSetProjectGrid",
         host_function<get_set_grid>(
             "project,set,divisionInOutOptional,swingmodeInOutOptional,swingamtInOutOptional",
             "The grid's division in whole notes, its swing (0, 1, or 3 for a line a measure), and how "
             "much")},
        {"SetProjectGrid", host_function<set_grid>("project,division", "Sets the grid's division")},
        {"SnapToGrid",
         host_function<snap>("project,time_pos", "The closest line of the grid while it snaps")},
        {"BR_GetClosestGridDivision",
         host_function<grid_line<project::closest_grid_line>>("position", "The closest line of the grid")},
        {"BR_GetPrevGridDivision",
         host_function<grid_line<project::previous_grid_line>>("position", "The grid's line before")},
        {"BR_GetNextGridDivision",
         host_function<grid_line<project::next_grid_line>>("position", "The grid's line after")},
    };
    return table;
}

} // namespace headless::functions
