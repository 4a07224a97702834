#include "headless/rpp/item_edges.hpp"

#include "headless/rpp/copies.hpp"
#include "headless/rpp/properties.hpp"
#include "headless/rpp/stretch_markers.hpp"
#include "headless/rpp/take_markers.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>
#include <vector>

namespace headless::rpp {
namespace {

using project::Envelope;
using project::EnvelopePoint;
using project::PointShape;

constexpr double infinity = std::numeric_limits<double>::infinity();

// A straight segment can be cut by a point on it. A bent one keeps the point beyond the cut.
bool is_straight(const EnvelopePoint& point) {
    return point.shape == PointShape::linear || point.shape == PointShape::square;
}

void cut_envelope_before(Envelope& envelope, double position) {
    const auto old = envelope.points();
    const std::size_t next = envelope.points_up_to(position);
    if (next == 0)
        return;
    EnvelopePoint edge = old[next - 1];
    if (is_straight(edge) || next == old.size()) {
        edge.value = envelope.value_at(position);
        edge.position_seconds = position;
    }
    std::vector<EnvelopePoint> points{edge};
    points.insert(points.end(), old.begin() + static_cast<std::ptrdiff_t>(next), old.end());
    envelope.set_points(std::move(points));
}

void cut_envelope_after(Envelope& envelope, double position) {
    const auto old = envelope.points();
    const std::size_t next = envelope.points_up_to(position);
    if (next == old.size())
        return;
    EnvelopePoint edge = old[next];
    if (next == 0 || is_straight(old[next - 1])) {
        edge.value = envelope.value_at(position);
        edge.position_seconds = position;
        edge.shape = next == 0 ? edge.shape : old[next - 1].shape;
    }
    std::vector<EnvelopePoint> points(old.begin(), old.begin() + static_cast<std::ptrdiff_t>(next));
    if (points.empty() || points.back().position_seconds != edge.position_seconds)
        points.push_back(edge);
    envelope.set_points(std::move(points));
}

void shift_envelope(Envelope& envelope, double seconds) {
    std::vector<EnvelopePoint> points(envelope.points().begin(), envelope.points().end());
    for (EnvelopePoint& point : points)
        point.position_seconds += seconds;
    envelope.set_points(std::move(points));
}

// The second number of a take's offset, which only MIDI has, counts quarter notes.
void move_offset(project::Take& take, double seconds, double quarter_notes) {
    take.start_offset_seconds += seconds;
    const FieldPlace in_beats{"SOFFS", 2};
    if (!text_of(take, in_beats).empty())
        set_number(take, in_beats, number_of(take, in_beats) + quarter_notes);
}

// Lets the takes begin later (or earlier) in what they play, as their item begins at `to_seconds` instead of
// `from_seconds`.
void move_beginning(project::Item& item, double from_seconds, double to_seconds) {
    const project::TempoMap& map = item.track().project().tempo_map;
    const double seconds = to_seconds - from_seconds;
    const double quarter_notes = map.quarters_at(to_seconds) - map.quarters_at(from_seconds);
    for (const auto& take : item.takes()) {
        if (take->is_empty)
            continue;
        const double in_take = seconds * take->play_rate;
        move_offset(*take, in_take, quarter_notes * take->play_rate);
        shift_stretch_markers(*take, -in_take);
        for (const auto& envelope : take->envelopes())
            shift_envelope(*envelope, -in_take);
    }
    item.snap_offset_seconds = std::max(item.snap_offset_seconds - seconds, 0.0);
}

// Removes what lies before the beginning of the item.
void cut_before_beginning(project::Item& item) {
    for (const auto& take : item.takes()) {
        cut_take_markers(*take, source_seconds_at(*take, stretch_markers(*take), 0.0), infinity);
        cut_stretch_markers(*take, 0.0, infinity);
        for (const auto& envelope : take->envelopes())
            cut_envelope_before(*envelope, 0.0);
    }
}

// Removes what lies after the end of the item.
void cut_after_end(project::Item& item) {
    for (const auto& take : item.takes()) {
        const double end = item.length_seconds() * take->play_rate;
        cut_take_markers(*take, -infinity, source_seconds_at(*take, stretch_markers(*take), end));
        cut_stretch_markers(*take, -infinity, end);
        for (const auto& envelope : take->envelopes())
            cut_envelope_after(*envelope, end);
    }
}

// The lengths of a fade: set by hand, and of a crossfade.
void remove_fade(project::Item& item, std::string_view token) {
    set_number(item, {token, 2}, 0.0);
    set_number(item, {token, 3}, 0.0);
}

} // namespace

project::Item* split_item(project::Item& item, double at_seconds) {
    const double end = item.end_seconds();
    if (!(at_seconds > item.position_seconds() && at_seconds < end))
        return nullptr;
    const double length = at_seconds - item.position_seconds();
    project::Item& right = copy_item(item, item.track());
    right.set_position_seconds(at_seconds);
    right.set_length_seconds(end - at_seconds);
    move_beginning(right, item.position_seconds(), at_seconds);
    cut_before_beginning(right);
    remove_fade(right, "FADEIN");
    item.set_length_seconds(length);
    cut_after_end(item);
    remove_fade(item, "FADEOUT");
    return &right;
}

bool set_edges(project::Item& item, double start_seconds, double end_seconds) {
    const double start = std::max(start_seconds, 0.0);
    const bool is_there = start == item.position_seconds() && end_seconds == item.end_seconds();
    if (is_there || !std::isfinite(end_seconds) || !(end_seconds > start))
        return false;
    if (start != item.position_seconds())
        move_beginning(item, item.position_seconds(), start);
    item.set_position_seconds(start);
    item.set_length_seconds(end_seconds - start);
    return true;
}

} // namespace headless::rpp
