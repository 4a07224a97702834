#pragma once
// The project's tempo and time signatures over time, and the conversions between seconds, quarter notes, and
// measures with beats. Quarter note 0 and measure 0 lie at 0 seconds. Both run on below 0 and past the last
// point.
//
// Tempo is quarter notes a minute, whatever the signature. Of a gradual change it runs evenly over time from
// one point to the next: between tempo a and tempo b that lie T seconds apart, t seconds have
// (a t + (b - a) t^2 / 2T) / 60 quarter notes.

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace headless::project {

class Project;

/// Whether that many quarter notes a minute can be reckoned with.
bool is_tempo(double bpm);

/// A time signature.
struct Meter {
    int numerator = 4; ///< beats a measure
    int denominator = 4;

    double quarters_a_beat() const { return 4.0 / denominator; }
    double quarters_a_measure() const { return numerator * quarters_a_beat(); }

    bool operator==(const Meter&) const = default;
};

/// A change of the tempo, of the signature, or of both.
struct TempoPoint {
    double position_seconds = 0.0;
    double tempo_bpm = 120.0;     ///< quarter notes a minute
    bool is_gradual = false;      ///< the tempo runs evenly to that of the next point; otherwise it stays
    bool sets_tempo = true;       ///< otherwise `tempo_bpm` has no meaning
    std::optional<Meter> meter{}; ///< begins a measure; empty: as before
    bool selected = false;
    int other_flags = 0; ///< of the project file, without 1 (sets the signature) and 2 (sets no tempo)
    std::string
        line{}; ///< as it stands in the project file, for what it holds besides; empty for a new point

    /// Whether it sets a tempo, and one that can be reckoned with.
    bool decides_tempo() const;

    bool operator==(const TempoPoint&) const = default;
};

/// A place in the music. Beats are those of the signature: eighths in 6/8.
struct MusicalPosition {
    int measure = 0;         ///< from 0
    double beat = 0.0;       ///< since the measure's start
    double full_beats = 0.0; ///< since measure 0
    Meter meter;
};

/// Where a measure lies. It ends early if a signature begins within it.
struct MeasureSpan {
    int measure = 0;
    double start_quarters = 0.0;
    double end_quarters = 0.0;
    Meter meter;
};

class TempoMap {
public:
    /// @param project  its tempo and signature hold before the first point that sets one
    explicit TempoMap(const Project& project) : project_(project) {}
    TempoMap(const TempoMap&) = delete;
    TempoMap& operator=(const TempoMap&) = delete;

    /// Ascending by position. Points at the same position keep the order they were given in; the last counts.
    std::span<const TempoPoint> points() const { return points_; }

    /// Sorts by position (stable) and leaves out points without a finite position.
    void set_points(std::vector<TempoPoint> points);

    /// As set_points, with the points that the project file holds.
    void read_points(std::vector<TempoPoint> points);

    /// Whether the points may differ from those in the file.
    bool has_new_points() const { return has_new_points_; }

    /// Adds a point after those of its position.
    /// @returns its index; empty if the position is not finite
    std::optional<std::size_t> add(TempoPoint point);

    /// @returns the index that the point has now; empty, with nothing changed, if there is no point of that
    /// index or the new position is not finite
    std::optional<std::size_t> replace(std::size_t index, TempoPoint point);

    /// @returns false past the end
    bool erase(std::size_t index);

    /// Number of points at or before the position, which is also the index of the next point.
    std::size_t points_up_to(double seconds) const;

    double quarters_at(double seconds) const;
    double seconds_at(double quarters) const;

    /// Quarter notes a minute.
    double tempo_at(double seconds) const;

    Meter meter_at(double seconds) const;

    MusicalPosition position_at(double seconds) const;

    /// The measure at that place. A hair before a measure counts as its start.
    MeasureSpan measure_at(double quarters) const;

    /// The measure of that number, which may be below 0.
    MeasureSpan measure(int number) const;

    /// The time that many beats after measure 0.
    double seconds_at_beats(double full_beats) const;

    /// The time that many beats after the start of that measure, in beats of its signature.
    double seconds_at_beats(int measure, double beats) const;

private:
    /// From a change of the tempo to the next.
    struct TempoSection {
        double start_seconds;
        double start_quarters;
        double tempo_bpm;
        double slope; ///< of the tempo, a second

        double tempo_after(double seconds) const { return tempo_bpm + slope * seconds; }
        double quarters_after(double seconds) const;
        double seconds_after(double quarters) const;
    };

    /// From a change of the signature to the next.
    struct MeterSection {
        double start_quarters;
        double start_beats;
        int first_measure;
        Meter meter;

        int measures_after(double quarters) const;
    };

    /// What the points and the project's tempo and signature come to.
    struct Sections {
        std::vector<TempoSection> tempos;
        std::vector<MeterSection> meters;
        double project_tempo_bpm = 0.0;
        Meter project_meter;
    };

    const Sections& sections() const;
    void add_tempos(Sections& sections) const;
    void add_meters(Sections& sections) const;
    MeasureSpan measure_of(const MeterSection& section, int number) const;
    void note_change();

    const Project& project_;
    std::vector<TempoPoint> points_;
    bool has_new_points_ = false;
    mutable std::optional<Sections> sections_; // empty if points changed since
};

} // namespace headless::project
