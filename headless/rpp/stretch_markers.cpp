#include "headless/rpp/stretch_markers.hpp"

#include "headless/rpp/properties.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace headless::rpp {
namespace {

constexpr std::string_view token = "SM";

double number_or_zero(std::string_view word) { return chunk::number(word).value_or(0.0); }

// "SM pos src [slope [flag]] + pos src ..."
void read_line(StretchMarkers& markers, const chunk::Text& line) {
    chunk::Words words(line.content());
    words.next();
    std::size_t field = 0;
    for (auto word = words.next(); word; word = words.next()) {
        if (word->text == "+") {
            field = 0;
            continue;
        }
        if (field == 0)
            markers.emplace_back();
        StretchMarker& marker = markers.back();
        if (field == 0)
            marker.position_seconds = number_or_zero(word->text);
        else if (field == 1)
            marker.source_seconds = number_or_zero(word->text);
        else if (field == 2)
            marker.slope = number_or_zero(word->text);
        else
            marker.flag.append(marker.flag.empty() ? "" : " ").append(word->text);
        ++field;
    }
}

std::string text_of(const StretchMarkers& markers) {
    std::string text(token);
    std::string_view separator = " ";
    for (const StretchMarker& marker : markers) {
        text.append(separator).append(chunk::decimal(marker.position_seconds));
        text.append(" ").append(chunk::decimal(marker.source_seconds));
        if (marker.slope != 0.0 || !marker.flag.empty())
            text.append(" ").append(chunk::decimal(marker.slope));
        if (!marker.flag.empty())
            text.append(" ").append(marker.flag);
        separator = " + ";
    }
    return text;
}

// A stretch between two markers, of which `share` (0..1) has gone by.
class Stretch {
public:
    Stretch(const StretchMarker& from, const StretchMarker& to, double position_seconds)
        : from_(from), to_(to) {
        const double length = to.position_seconds - from.position_seconds;
        share_ = length > 0.0 ? (position_seconds - from.position_seconds) / length : 1.0;
    }

    double source_seconds() const {
        const double rate = 1.0 - from_.slope + from_.slope * share_; // on average up to here
        return from_.source_seconds + (to_.source_seconds - from_.source_seconds) * share_ * rate;
    }

    // The slopes that keep the rate at every moment when the stretch is cut in two.
    double slope_before() const {
        const double rate = 1.0 - from_.slope + from_.slope * share_;
        return rate != 0.0 ? from_.slope * share_ / rate : 0.0;
    }
    double slope_after() const {
        const double rate = 1.0 + from_.slope * share_;
        return rate != 0.0 ? from_.slope * (1.0 - share_) / rate : 0.0;
    }

private:
    const StretchMarker& from_;
    const StretchMarker& to_;
    double share_;
};

StretchMarkers::const_iterator first_after(const StretchMarkers& markers, double position_seconds) {
    return std::ranges::upper_bound(markers, position_seconds, {}, &StretchMarker::position_seconds);
}

void cut_before(const project::Take& take, StretchMarkers& markers, double position_seconds) {
    const auto next = first_after(markers, position_seconds);
    if (next == markers.begin())
        return;
    StretchMarker edge{position_seconds, source_seconds_at(take, markers, position_seconds)};
    if (next != markers.end())
        edge.slope = Stretch(*(next - 1), *next, position_seconds).slope_after();
    if ((next - 1)->position_seconds == position_seconds)
        edge = *(next - 1);
    markers.erase(markers.begin(), next);
    markers.insert(markers.begin(), edge);
}

void cut_after(const project::Take& take, StretchMarkers& markers, double position_seconds) {
    const auto next = first_after(markers, position_seconds);
    if (next == markers.end())
        return;
    const auto kept = static_cast<std::size_t>(next - markers.begin());
    const bool has_edge = kept > 0 && markers[kept - 1].position_seconds == position_seconds;
    const StretchMarker edge{position_seconds, source_seconds_at(take, markers, position_seconds)};
    const double slope = kept > 0 ? Stretch(markers[kept - 1], *next, position_seconds).slope_before() : 0.0;
    markers.resize(kept);
    if (kept > 0)
        markers.back().slope = slope;
    if (!has_edge)
        markers.push_back(edge);
}

} // namespace

StretchMarkers stretch_markers(const project::Take& take) {
    StretchMarkers markers;
    for (const chunk::Node& node : take.lines)
        if (node.line() && node.token() == token)
            read_line(markers, *node.line());
    std::ranges::stable_sort(markers, {}, &StretchMarker::position_seconds);
    return markers;
}

void set_stretch_markers(project::Take& take, const StretchMarkers& markers) {
    const auto is_marker_line = [](const chunk::Node& node) { return node.line() && node.token() == token; };
    const auto first = std::ranges::find_if(take.lines, is_marker_line);
    if (markers.empty()) {
        std::erase_if(take.lines, is_marker_line);
        return;
    }
    if (first == take.lines.end()) {
        insert(take, chunk::Text::made(text_of(markers)));
        return;
    }
    chunk::Text& line = *first->line();
    line.replace(0, line.content().size(), text_of(markers));
    take.lines.erase(std::remove_if(first + 1, take.lines.end(), is_marker_line), take.lines.end());
}

double source_seconds_at(const project::Take& take, const StretchMarkers& markers, double position_seconds) {
    if (markers.empty())
        return take.start_offset_seconds + position_seconds;
    const auto next = first_after(markers, position_seconds);
    if (next == markers.begin())
        return next->source_seconds + position_seconds - next->position_seconds;
    const StretchMarker& last = *(next - 1);
    if (next == markers.end())
        return last.source_seconds + position_seconds - last.position_seconds;
    return Stretch(last, *next, position_seconds).source_seconds();
}

void cut_stretch_markers(project::Take& take, double from_seconds, double to_seconds) {
    const StretchMarkers present = stretch_markers(take);
    if (present.empty())
        return;
    StretchMarkers markers = present;
    cut_after(take, markers, to_seconds);
    cut_before(take, markers, from_seconds);
    set_stretch_markers(take, markers);
}

void shift_stretch_markers(project::Take& take, double seconds) {
    StretchMarkers markers = stretch_markers(take);
    if (markers.empty() || seconds == 0.0)
        return;
    for (StretchMarker& marker : markers)
        marker.position_seconds += seconds;
    set_stretch_markers(take, markers);
}

} // namespace headless::rpp
