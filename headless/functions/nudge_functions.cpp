// ApplyNudge: moves, trims or shifts the selected items by an amount, or to a value, in one of many units.

#include "headless/functions/adapter.hpp"
#include "headless/functions/tables.hpp"
#include "headless/project/grid_lines.hpp"
#include "headless/project/time_text.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace headless::functions {
namespace {

/// What is nudged, by the numbers of the workstation.
enum class Target { position, left_trim, left_edge, right_edge, contents, duplicate, cursor };

/// The units that are not notes.
enum Unit {
    unit_milliseconds = 0,
    unit_seconds = 1,
    unit_grid = 2,
    unit_first_note = 3,
    unit_last_note = 15,
    unit_measures_and_beats = 16,
    unit_samples = 17,
    unit_frames = 18,
    unit_pixels = 19,
    unit_item_lengths = 20,
    unit_selections = 21
};

// From a 256th to a whole note, in quarter notes. Triplets stand before the plain notes from 32nds to quarters.
constexpr std::array<double, 13> note_quarters{1.0 / 64, 1.0 / 32, 1.0 / 16, 1.0 / 12, 1.0 / 8,
                                               1.0 / 6,  1.0 / 4,  1.0 / 3,  1.0 / 2,  2.0 / 3,
                                               1.0,      2.0,      4.0};
static_assert(note_quarters.size() == unit_last_note - unit_first_note + 1);

struct Amount {
    int unit;
    double value;
    double selection_seconds; ///< from the first selected item to the end of the last
};

double selection_length(const project::Project& project) {
    const auto items = project.selected_items().all();
    if (items.empty())
        return 0.0;
    double start = items.front()->position_seconds();
    double end = items.front()->end_seconds();
    for (const project::Item* item : items) {
        start = std::min(start, item->position_seconds());
        end = std::max(end, item->end_seconds());
    }
    return end - start;
}

// Quarter notes after the place.
double after_quarters(const project::Project& project, double from_seconds, double quarters) {
    const project::TempoMap& map = project.tempo_map;
    return map.seconds_at(map.quarters_at(from_seconds) + quarters);
}

// "1.15" is a measure and a beat and a half.
double after_measures(const project::Project& project, double from_seconds, double measures_and_beats) {
    const double sign = measures_and_beats < 0.0 ? -1.0 : 1.0;
    const double whole = std::trunc(measures_and_beats);
    constexpr double limit = 1e6;
    const int measures = static_cast<int>(std::clamp(whole, -limit, limit));
    const double beats = std::round((std::abs(measures_and_beats) - std::abs(whole)) * 1e9) / 1e8;
    const project::MusicalPosition from = project.tempo_map.position_at(from_seconds);
    return project.tempo_map.seconds_at_beats(from.measure + measures, from.beat + sign * beats);
}

/// The place that an amount leads to.
/// @param length_seconds  of the item at hand
double place_after(const project::Project& project, double from_seconds, double length_seconds,
                   const Amount& amount) {
    const double value = amount.value;
    if (amount.unit >= unit_first_note && amount.unit <= unit_last_note)
        return after_quarters(project, from_seconds,
                              value * note_quarters[static_cast<std::size_t>(amount.unit - unit_first_note)]);
    switch (amount.unit) {
    case unit_milliseconds:
        return from_seconds + value / 1000.0;
    case unit_grid:
        return after_quarters(project, from_seconds, value * project.grid.division_quarters);
    case unit_measures_and_beats:
        return after_measures(project, from_seconds, value);
    case unit_samples:
        return from_seconds + value / std::max(project.sample_rate, 1);
    case unit_frames:
        return from_seconds + value / project::exact_frame_rate(project);
    case unit_pixels:
        return from_seconds + value / project.view.pixels_a_second();
    case unit_item_lengths:
        return from_seconds + value * length_seconds;
    case unit_selections:
        return from_seconds + value * amount.selection_seconds;
    default:
        return from_seconds + value;
    }
}

void shift_contents(project::Item& item, double by_seconds) {
    for (const auto& take : item.takes())
        take->start_offset_seconds += by_seconds * take->play_rate;
}

// What is heard stays where it is on the time line.
void trim_left(project::Item& item, double to_seconds) {
    const double by = std::clamp(to_seconds, 0.0, item.end_seconds()) - item.position_seconds();
    item.set_length_seconds(item.length_seconds() - by);
    item.set_position_seconds(item.position_seconds() + by);
    shift_contents(item, by);
}

// What is heard begins at the new edge as it did at the old one.
void move_left_edge(project::Item& item, double to_seconds) {
    const double by = std::clamp(to_seconds, 0.0, item.end_seconds()) - item.position_seconds();
    item.set_length_seconds(item.length_seconds() - by);
    item.set_position_seconds(item.position_seconds() + by);
}

struct Nudge {
    Target target;
    Amount amount;
    bool is_absolute;
    bool snaps;

    // Where what lies at that place goes.
    double destination(const project::Project& project, double from, double length) const {
        const double to = place_after(project, is_absolute ? 0.0 : from, length, amount);
        return snaps ? project::closest_grid_line(project, to) : to;
    }

    void apply_to(project::Project& project, project::Item& item) const {
        const double start = item.position_seconds();
        const double length = item.length_seconds();
        switch (target) {
        case Target::position:
            item.set_position_seconds(std::max(destination(project, start, length), 0.0));
            break;
        case Target::left_trim:
            trim_left(item, destination(project, start, length));
            break;
        case Target::left_edge:
            move_left_edge(item, destination(project, start, length));
            break;
        case Target::right_edge:
            item.set_length_seconds(destination(project, item.end_seconds(), length) - start);
            break;
        case Target::contents:
            shift_contents(item, start - destination(project, start, length));
            break;
        default:
            break;
        }
    }
};

bool move_cursor(project::Project& project, const Nudge& nudge) {
    project.cursor_seconds = std::max(nudge.destination(project, project.cursor_seconds, 0.0), 0.0);
    return true;
}

// Whether the nudge can be done; what cannot is reported.
bool is_possible(Workstation& workstation, int target, int unit, double value, bool is_absolute) {
    std::string problem;
    if (!std::isfinite(value))
        return false;
    if (target < 0 || target > static_cast<int>(Target::cursor) || unit < 0 || unit > unit_selections)
        problem = "target " + std::to_string(target) + " or unit " + std::to_string(unit) + " is not known";
    else if (target == static_cast<int>(Target::duplicate))
        problem = "items are not duplicated";
    else if (target == static_cast<int>(Target::contents) && is_absolute)
        problem = "contents cannot be set to a place";
    else if (unit == unit_measures_and_beats && is_absolute)
        problem = "nothing can be set to a measure";
    if (!problem.empty())
        workstation.report_once({"ApplyNudge: " + problem});
    return problem.empty();
}

bool apply_nudge(Workstation& workstation, project::Project& project, int flags, int target, int unit,
                 double value, bool is_reversed, int) {
    const bool is_absolute = (flags & 1) != 0;
    if (!is_possible(workstation, target, unit, value, is_absolute))
        return false;
    const Nudge nudge{static_cast<Target>(target),
                      {unit, is_reversed && !is_absolute ? -value : value, selection_length(project)},
                      is_absolute,
                      (flags & 2) != 0};
    if (nudge.target == Target::cursor)
        return move_cursor(project, nudge);
    const auto items = project.selected_items().all();
    for (project::Item* item : items)
        nudge.apply_to(project, *item);
    return !items.empty();
}

} // namespace

std::span<const workstation::HostFunction> nudge_functions() {
    static const workstation::HostFunction table[] = {
        {"ApplyNudge",
         host_function<apply_nudge>("project,nudgeflag,nudgewhat,nudgeunits,value,reverse,copies",
                                    "Nudges the selected items' position (0), left trim, left edge, right "
                                    "edge, contents (4), or the "
                                    "edit cursor (6) by a value, or to it if nudgeflag is 1")},
    };
    return table;
}

} // namespace headless::functions
