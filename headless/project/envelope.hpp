#pragma once
// A curve over time: points with a value and a shape, in the order of their positions.
// Positions are seconds from the take's or the project's start, values linear gain, pan, semitones, ...

#include "headless/chunk/guid.hpp"
#include "headless/chunk/lines.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace headless::project {

/// How the curve runs from one point to the next. The numbers are those of the project file.
enum class PointShape { linear, square, slow_start_end, fast_start, fast_end, bezier };

/// The shape with that number, linear for an unknown number.
PointShape point_shape(int number);

struct EnvelopePoint {
    double position_seconds = 0.0;
    double value = 1.0;
    PointShape shape = PointShape::linear; ///< of the segment after the point
    bool selected = false;
    double tension = 0.0; ///< -1..1, bends a bezier: above 0 it starts slowly, below 0 it starts fast

    bool operator==(const EnvelopePoint&) const = default;
};

/// The properties of an envelope other than its points.
struct EnvelopeProperties {
    bool active = true;
    bool visible = true;
    bool armed = false;
    bool in_lane = true;
    int lane_height = 0; ///< pixels, 0 is the default height
    PointShape default_shape = PointShape::linear;
    bool fader_scaling = false; ///< how the curve is drawn; values are linear gain either way
    int automation_item_options = -1;

    bool operator==(const EnvelopeProperties&) const = default;
};

/// The curve's value at `position_seconds`, which lies from `from`'s position to before `to`'s.
double value_between(const EnvelopePoint& from, const EnvelopePoint& to, double position_seconds);

class Envelope {
public:
    /// @param serial unique among the project's envelopes
    explicit Envelope(std::string name, std::uint64_t serial = 0) : serial_(serial), name_(std::move(name)) {}

    std::uint64_t serial() const { return serial_; }

    /// "Volume", "Pan", ...: what GetTakeEnvelopeByName looks for.
    const std::string& name() const { return name_; }

    EnvelopeProperties properties;

    chunk::Guid id; ///< none until the envelope is saved or asked for it

    /// Its lines in the file, null if it was made since.
    std::unique_ptr<chunk::Block> block;

    /// Ascending by position. Points at the same position keep the order they were given in.
    std::span<const EnvelopePoint> points() const { return points_; }

    /// Sorts by position (stable) and leaves out points whose position or value is not finite.
    void set_points(std::vector<EnvelopePoint> points);

    /// As set_points, with the points that the lines hold.
    void read_points(std::vector<EnvelopePoint> points);

    /// Whether the points may differ from those in the lines.
    bool has_new_points() const { return has_new_points_; }

    /// Moves all points out of an envelope that will not be used again.
    std::vector<EnvelopePoint> take_points() && { return std::move(points_); }

    /// Number of points at or before the position, which is also the index of the next point. A walk along
    /// the curve calls this once and then counts up.
    std::size_t points_up_to(double position_seconds) const;

    /// Before the first point this is that point's value, from the last point on it is the last point's
    /// value, and without any point it is 1. If several points lie at one position, the last one counts from
    /// there on, so that a curve can step.
    double value_at(double position_seconds) const;

private:
    std::uint64_t serial_;
    bool has_new_points_ = false;
    std::string name_;
    std::vector<EnvelopePoint> points_;
};

} // namespace headless::project
