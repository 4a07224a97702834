#include "headless/rpp/time_lines.hpp"

#include "headless/rpp/fields.hpp"
#include "headless/rpp/forms.hpp"

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

namespace headless::rpp {
namespace {

using chunk::Text;
using project::Project;
using project::TimeRange;

struct FrameRate {
    double frames_a_second = 0.0;
    bool drop_frame = false;

    bool operator==(const FrameRate&) const = default;
};

// What the line says about whole rates: they are exact, or run at 1000/1001 and skip or do not skip numbers.
constexpr int exact_rate = 0;
constexpr int drop_frame = 1;
constexpr int non_drop = 2;

// As people write it: 29.97, 23.976.
double slowed(double whole_rate) { return std::round(whole_rate * 1000.0 / 1001.0 * 1000.0) / 1000.0; }

FrameRate read_frame_rate(const Text& line) {
    const double rate = chunk::number_at(line, 4, 24.0);
    const int kind = to_int(chunk::number_at(line, 5, exact_rate));
    const bool is_whole = rate == std::round(rate);
    return {is_whole && kind != exact_rate ? slowed(rate) : rate, kind == drop_frame};
}

void write_frame_rate(Text& line, FrameRate wanted) {
    if (read_frame_rate(line) == wanted)
        return;
    const double whole = std::round(wanted.frames_a_second * 1001.0 / 1000.0);
    const bool is_slowed = wanted.frames_a_second != std::round(wanted.frames_a_second) &&
                           std::abs(slowed(whole) - wanted.frames_a_second) < 0.005;
    const int kind = wanted.drop_frame ? drop_frame : is_slowed ? non_drop : exact_rate;
    const std::string_view form = default_line(project_forms, "TIMEMODE");
    chunk::set_word(line, 4, chunk::decimal(is_slowed ? whole : wanted.frames_a_second), form);
    chunk::set_word(line, 5, std::to_string(kind), form);
}

TimeRange read_range(const Text& line) {
    const double first = chunk::number_at(line, 1, 0.0);
    const double second = chunk::number_at(line, 2, 0.0);
    return {std::min(first, second), std::max(first, second)};
}

void write_range(Text& line, const TimeRange& range) {
    if (read_range(line) == range)
        return;
    chunk::set_word(line, 1, chunk::decimal(range.start_seconds));
    chunk::set_word(line, 2, chunk::decimal(range.end_seconds));
}

constexpr int snapping_off = 256; // of the grid's flags

project::Grid read_grid(const Text& line) {
    project::Grid grid;
    grid.snaps = (to_int(chunk::number_at(line, 1, 0.0)) & snapping_off) == 0;
    if (const double division = chunk::number_at(line, 3, 0.0); division > 0.0)
        grid.division_quarters = division;
    const int swing = to_int(chunk::number_at(line, 6, 0.0));
    grid.swing =
        swing == 1 || swing == 3 ? static_cast<project::Grid::Swing>(swing) : project::Grid::Swing::off;
    grid.swing_amount = chunk::number_at(line, 7, 0.0);
    return grid;
}

void write_grid(Text& line, const project::Grid& wanted) {
    const project::Grid present = read_grid(line);
    const std::string_view form = default_line(project_forms, "GRID");
    if (present.snaps != wanted.snaps) {
        const int flags = to_int(chunk::number_at(line, 1, 0.0));
        chunk::set_word(line, 1, std::to_string(wanted.snaps ? flags & ~snapping_off : flags | snapping_off),
                        form);
    }
    if (present.division_quarters != wanted.division_quarters)
        chunk::set_word(line, 3, chunk::decimal(wanted.division_quarters), form);
    if (present.swing != wanted.swing)
        chunk::set_word(line, 6, std::to_string(static_cast<int>(wanted.swing)), form);
    if (present.swing_amount != wanted.swing_amount)
        chunk::set_word(line, 7, chunk::decimal(wanted.swing_amount), form);
}

} // namespace

void read_time_lines(Project& project, const chunk::Lines& lines) {
    if (const Text* line = chunk::find_line(lines, "TIMEMODE")) {
        const FrameRate rate = read_frame_rate(*line);
        project.frame_rate = rate.frames_a_second;
        project.drop_frame = rate.drop_frame;
    }
    if (const Text* line = chunk::find_line(lines, "GRID"))
        project.grid = read_grid(*line);
    if (const Text* line = chunk::find_line(lines, "ZOOM"))
        project.view =
            project::ArrangeView::from_zoom(chunk::number_at(*line, 1, 0.0), chunk::number_at(*line, 2, 0.0));
    const Text* selection = chunk::find_line(lines, "SELECTION");
    const Text* loop = chunk::find_line(lines, "SELECTION2");
    const TimeRange time_selection = selection ? read_range(*selection) : TimeRange();
    project.load_ranges(time_selection, loop ? read_range(*loop) : time_selection);
}

void edit_time_line(Text& line, const Project& project) {
    const std::string token(chunk::token(line.content())); // editing moves the line's text
    if (token == "TIMEMODE")
        write_frame_rate(line, {project.frame_rate, project.drop_frame});
    else if (token == "SELECTION")
        write_range(line, project.time_selection());
    else if (token == "SELECTION2")
        write_range(line, project.loop_range());
    else if (token == "GRID")
        write_grid(line, project.grid);
}

} // namespace headless::rpp
