#pragma once
// What a project holds about its time line: the time selection, the grid, the ruler and the part in view.

namespace headless::project {

/// Empty if both ends are equal; then it counts as not there.
struct TimeRange {
    double start_seconds = 0.0;
    double end_seconds = 0.0;

    double length_seconds() const { return end_seconds - start_seconds; }

    bool operator==(const TimeRange&) const = default;
};

/// The distance of the grid's lines, and whether positions snap to them. Lines begin anew at each measure.
struct Grid {
    /// How every second line moves, as the interface of the workstation numbers it.
    enum class Swing {
        off = 0,
        on = 1,
        measures = 3
    }; ///< `measures`: a line a measure, whatever the division

    bool snaps = true;
    double division_quarters = 1.0; ///< quarter notes from line to line
    Swing swing = Swing::off;
    double swing_amount = 0.0; ///< -1..1; 1 moves a line by half the division

    bool operator==(const Grid&) const = default;
};

/// What keeps its place when the tempo changes. The numbers are those of the project file.
enum class Timebase {
    inherited = -1, ///< an item has that of its track, a track that of the project
    time = 0,       ///< seconds
    beats = 1,      ///< position, length and play rate follow the beats
    beats_position = 2
};

/// The units of the ruler. The numbers are those of the project file.
enum class RulerMode {
    time = 0,
    beats_and_time = 1,
    beats = 2,
    seconds = 3,
    samples = 4,
    timecode = 5, ///< hours, minutes, seconds, frames
    short_beats = 6,
    short_beats_and_time = 7,
    frames = 8
};

/// The part of the time line that a window would show. The headless host has a window of `width_pixels`.
struct ArrangeView {
    static constexpr double width_pixels = 1000.0;

    double start_seconds = 0.0;
    double end_seconds = 10.0; ///< after the start

    /// From what a project file holds: pixels a second, and the pixels before the view. A scale that is not
    /// above 0 counts as 100.
    static ArrangeView from_zoom(double pixels_a_second, double scrolled_pixels) {
        const double scale = pixels_a_second > 0.0 ? pixels_a_second : 100.0;
        const double start = scrolled_pixels / scale;
        return {start, start + width_pixels / scale};
    }

    double pixels_a_second() const { return width_pixels / (end_seconds - start_seconds); }
    double scrolled_pixels() const { return start_seconds * pixels_a_second(); }

    bool operator==(const ArrangeView&) const = default;
};

} // namespace headless::project
