#include "headless/project/envelope.hpp"

#include <algorithm>
#include <cmath>

namespace headless::project {
namespace {

// A quadratic Bézier from (0, 0) to (1, 1) whose control point moves along the falling diagonal: the middle
// gives a straight line, the lower right corner the slowest start.
double bezier(double t, double tension) {
    const double control = 0.5 + 0.5 * std::clamp(tension, -1.0, 1.0);
    const double root = std::sqrt(control * control + (1.0 - 2.0 * control) * t);
    if (control + root == 0.0)
        return 0.0;
    const double s = t / (control + root);
    return 2.0 * s * (1.0 - s) * (1.0 - control) + s * s;
}

// The fraction of the way from one value to the next after the fraction t of the time.
double progress(PointShape shape, double t, double tension) {
    switch (shape) {
    case PointShape::square:
        return 0.0;
    case PointShape::slow_start_end:
        return t * t * (3.0 - 2.0 * t);
    case PointShape::fast_start:
        return 1.0 - (1.0 - t) * (1.0 - t) * (1.0 - t);
    case PointShape::fast_end:
        return t * t * t;
    case PointShape::bezier:
        return bezier(t, tension);
    case PointShape::linear:
        break;
    }
    return t;
}

bool is_finite(const EnvelopePoint& point) {
    return std::isfinite(point.position_seconds) && std::isfinite(point.value);
}

} // namespace

PointShape point_shape(int number) {
    return number >= 0 && number <= static_cast<int>(PointShape::bezier) ? static_cast<PointShape>(number)
                                                                         : PointShape::linear;
}

double value_between(const EnvelopePoint& from, const EnvelopePoint& to, double position_seconds) {
    const double t =
        (position_seconds - from.position_seconds) / (to.position_seconds - from.position_seconds);
    return from.value + (to.value - from.value) * progress(from.shape, t, from.tension);
}

void Envelope::set_points(std::vector<EnvelopePoint> points) {
    std::erase_if(points, [](const EnvelopePoint& point) { return !is_finite(point); });
    if (!std::ranges::is_sorted(points, {},
                                &EnvelopePoint::position_seconds)) // sorting needs half as much memory again
        std::ranges::stable_sort(points, {}, &EnvelopePoint::position_seconds);
    points_ = std::move(points);
    has_new_points_ = true;
}

void Envelope::read_points(std::vector<EnvelopePoint> points) {
    set_points(std::move(points));
    has_new_points_ = false;
}

std::size_t Envelope::points_up_to(double position_seconds) const {
    const auto next =
        std::ranges::upper_bound(points_, position_seconds, {}, &EnvelopePoint::position_seconds);
    return static_cast<std::size_t>(next - points_.begin());
}

double Envelope::value_at(double position_seconds) const {
    if (points_.empty())
        return 1.0;
    const std::size_t next = points_up_to(position_seconds);
    if (next == 0)
        return points_.front().value;
    if (next == points_.size())
        return points_.back().value;
    return value_between(points_[next - 1], points_[next], position_seconds);
}

} // namespace headless::project
