#include "headless/project/envelope.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

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
    sorted_ = points_.size();
    is_left_unsorted_ = false;
    has_new_points_ = true;
}

void Envelope::read_points(std::vector<EnvelopePoint> points) {
    set_points(std::move(points));
    has_new_points_ = false;
}

const EnvelopePoint* Envelope::point(std::size_t index) const {
    if (!is_left_unsorted_)
        sort_points();
    return index < points_.size() ? &points_[index] : nullptr;
}

bool Envelope::insert_point(const EnvelopePoint& point, bool sorts) {
    if (!is_finite(point))
        return false;
    const bool stays_sorted = sorted_ == points_.size() &&
                              (points_.empty() || points_.back().position_seconds <= point.position_seconds);
    points_.push_back(point);
    sorted_ = stays_sorted ? points_.size() : sorted_;
    is_left_unsorted_ = !sorts;
    has_new_points_ = true;
    return true;
}

bool Envelope::replace_point(std::size_t index, const EnvelopePoint& point, bool sorts) {
    const EnvelopePoint* present = this->point(index);
    if (!present || !is_finite(point))
        return false;
    const bool is_moved = present->position_seconds != point.position_seconds;
    points_[index] = point;
    has_new_points_ = true;
    if (!is_moved && !sorts)
        return true;
    is_left_unsorted_ = !sorts;
    const auto place = points_.begin() + static_cast<std::ptrdiff_t>(index);
    if (is_moved && index < sorted_ && sorts) {
        // Only this point is out of order among the sorted ones.
        const auto end = points_.begin() + static_cast<std::ptrdiff_t>(sorted_);
        const auto before = std::ranges::upper_bound(points_.begin(), place, point.position_seconds, {},
                                                     &EnvelopePoint::position_seconds);
        if (before != place) {
            std::rotate(before, place, place + 1);
        } else {
            const auto behind = std::ranges::lower_bound(place + 1, end, point.position_seconds, {},
                                                         &EnvelopePoint::position_seconds);
            std::rotate(place, place + 1, behind);
        }
    } else if (is_moved) {
        sorted_ = std::min(sorted_, index);
    }
    return true;
}

bool Envelope::erase_point(std::size_t index) {
    if (!point(index))
        return false;
    points_.erase(points_.begin() + static_cast<std::ptrdiff_t>(index));
    sorted_ -= index < sorted_ ? 1 : 0;
    has_new_points_ = true;
    return true;
}

void Envelope::erase_points(double from_seconds, double to_seconds) {
    sort_points();
    const auto [first, last] =
        std::pair(std::ranges::lower_bound(points_, from_seconds, {}, &EnvelopePoint::position_seconds),
                  std::ranges::lower_bound(points_, to_seconds, {}, &EnvelopePoint::position_seconds));
    if (first >= last)
        return;
    points_.erase(first, last);
    sorted_ = points_.size();
    has_new_points_ = true;
}

void Envelope::sort_points() const {
    if (sorted_ == points_.size())
        return;
    const auto tail = points_.begin() + static_cast<std::ptrdiff_t>(sorted_);
    std::ranges::stable_sort(tail, points_.end(), {}, &EnvelopePoint::position_seconds);
    if (points_.end() - tail == 1) // the usual case, which needs no memory
        std::rotate(std::ranges::upper_bound(points_.begin(), tail, tail->position_seconds, {},
                                             &EnvelopePoint::position_seconds),
                    tail, points_.end());
    else
        std::ranges::inplace_merge(points_.begin(), tail, points_.end(), {},
                                   &EnvelopePoint::position_seconds);
    sorted_ = points_.size();
}

std::size_t Envelope::points_up_to(double position_seconds) const {
    sort_points();
    const auto next =
        std::ranges::upper_bound(points_, position_seconds, {}, &EnvelopePoint::position_seconds);
    return static_cast<std::size_t>(next - points_.begin());
}

double Envelope::value_at(double position_seconds) const {
    if (points_.empty())
        return 1.0;
    const std::size_t next = points_up_to(position_seconds); // sorts
    if (next == 0)
        return points_.front().value;
    if (next == points_.size())
        return points_.back().value;
    return value_between(points_[next - 1], points_[next], position_seconds);
}

} // namespace headless::project
