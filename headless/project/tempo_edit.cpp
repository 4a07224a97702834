#include "headless/project/tempo_edit.hpp"

#include "headless/project/project.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace headless::project {
namespace {

// What moves less than this has not moved, so that rounding changes nothing.
constexpr double hair_seconds = 1e-9;

bool is_near(double left, double right) { return std::abs(left - right) < hair_seconds; }

Timebase timebase_of(const Item& item) {
    if (item.timebase != Timebase::inherited)
        return item.timebase;
    const Track& track = item.track();
    return track.timebase != Timebase::inherited ? track.timebase : track.project().timebase;
}

struct QuarterSpan {
    double start;
    double end;
};

QuarterSpan span_at(const TempoMap& map, double start_seconds, double end_seconds) {
    return {map.quarters_at(start_seconds), map.quarters_at(end_seconds)};
}

/// Where everything that is attached to beats lies.
class BeatPlaces {
public:
    explicit BeatPlaces(Project& project) : project_(project) {
        const TempoMap& map = project.tempo_map;
        for (const auto& track : project.tracks())
            for (const auto& item : track->items())
                if (timebase_of(*item) != Timebase::time)
                    items_.push_back(
                        {item.get(), span_at(map, item->position_seconds(), item->end_seconds())});
        if (project.timebase != Timebase::time)
            for (const Marker& marker : project.markers.all())
                markers_.push_back(span_at(map, marker.position_seconds, marker.end_seconds));
        for (const TempoPoint& point : map.points())
            points_.push_back(map.quarters_at(point.position_seconds));
    }

    /// The quarter notes of the points after that time, from before the edit.
    std::vector<double> points_after(double seconds) const {
        const auto count = static_cast<std::ptrdiff_t>(project_.tempo_map.points_up_to(seconds));
        return {points_.begin() + count, points_.end()};
    }

    /// Puts the last points of the map back to these quarter notes, then everything else to its own.
    void restore(const std::vector<double>& last_points) {
        if (project_.tempo_timebase != Timebase::time)
            restore_points(last_points);
        for (const auto& [item, span] : items_)
            restore(*item, span);
        for (std::size_t index = 0; index < markers_.size(); ++index)
            restore(index, markers_[index]);
        project_.markers.sort();
    }

private:
    struct ItemPlace {
        Item* item;
        QuarterSpan span;
    };

    // First the points that decide the tempo, as the others lie on what these come to.
    void restore_points(const std::vector<double>& last_points) {
        TempoMap& map = project_.tempo_map;
        std::vector<TempoPoint> points(map.points().begin(), map.points().end());
        const auto first = points.end() - static_cast<std::ptrdiff_t>(last_points.size());
        std::vector<TempoPoint> deciding(points.begin(), first);
        map.set_points(deciding);
        const auto last =
            std::ranges::find_if(deciding.rbegin(), deciding.rend(), &TempoPoint::decides_tempo);
        TempoPoint from = last == deciding.rend() ? TempoPoint{.tempo_bpm = project_.tempo_bpm} : *last;
        double from_quarters = map.quarters_at(from.position_seconds);
        for (auto point = first; point != points.end(); ++point) {
            if (!point->decides_tempo())
                continue;
            const double quarters = last_points[static_cast<std::size_t>(point - first)];
            const double tempo = from.is_gradual ? (from.tempo_bpm + point->tempo_bpm) / 2.0 : from.tempo_bpm;
            const double length = std::max(quarters - from_quarters, 0.0) * 60.0 / tempo;
            point->position_seconds = from.position_seconds + length;
            deciding.push_back(*point);
            from = *point;
            from_quarters = quarters;
        }
        map.set_points(std::move(deciding));
        for (auto point = first; point != points.end(); ++point)
            if (!point->decides_tempo())
                point->position_seconds =
                    map.seconds_at(last_points[static_cast<std::size_t>(point - first)]);
        map.set_points(std::move(points));
    }

    void restore(Item& item, const QuarterSpan& span) {
        const double start = project_.tempo_map.seconds_at(span.start);
        if (!is_near(start, item.position_seconds()))
            item.set_position_seconds(start);
        if (timebase_of(item) != Timebase::beats)
            return;
        const double old_length = item.length_seconds();
        const double length = project_.tempo_map.seconds_at(span.end) - start;
        if (is_near(length, old_length) || length <= 0.0)
            return;
        item.set_length_seconds(length);
        for (const auto& take : item.takes())
            if (take->source.type != "MIDI") // its notes follow the tempo by themselves
                take->play_rate *= old_length / length;
    }

    void restore(std::size_t index, const QuarterSpan& span) {
        Marker marker = project_.markers.all()[index];
        const double start = project_.tempo_map.seconds_at(span.start);
        const double end = project_.tempo_map.seconds_at(span.end);
        if (is_near(start, marker.position_seconds) && is_near(end, marker.end_seconds))
            return;
        marker.position_seconds = start;
        if (marker.is_region)
            marker.end_seconds = end;
        project_.markers.replace(index, std::move(marker), false);
    }

    Project& project_;
    std::vector<ItemPlace> items_;
    std::vector<QuarterSpan> markers_; ///< in the order of the list
    std::vector<double> points_;       ///< in the order of the map
};

} // namespace

std::optional<std::size_t> add_tempo_point(Project& project, TempoPoint point) {
    BeatPlaces places(project);
    const auto later = places.points_after(point.position_seconds);
    const auto index = project.tempo_map.add(std::move(point));
    if (index)
        places.restore(later);
    return index;
}

std::optional<std::size_t> replace_tempo_point(Project& project, std::size_t index, TempoPoint point) {
    const auto points = project.tempo_map.points();
    if (index >= points.size())
        return std::nullopt;
    BeatPlaces places(project);
    // Points between the old place and the new one stay: they would change sides.
    const auto later = places.points_after(std::max(points[index].position_seconds, point.position_seconds));
    const auto new_index = project.tempo_map.replace(index, std::move(point));
    if (new_index)
        places.restore(later);
    return new_index;
}

bool erase_tempo_point(Project& project, std::size_t index) {
    const auto points = project.tempo_map.points();
    if (index >= points.size())
        return false;
    BeatPlaces places(project);
    const auto later = places.points_after(points[index].position_seconds);
    project.tempo_map.erase(index);
    places.restore(later);
    return true;
}

void set_project_tempo(Project& project, double bpm) {
    if (!is_tempo(bpm))
        return;
    BeatPlaces places(project);
    const auto later = places.points_after(-std::numeric_limits<double>::infinity());
    project.tempo_bpm = bpm;
    places.restore(later);
}

} // namespace headless::project
