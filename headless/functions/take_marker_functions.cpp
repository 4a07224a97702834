// Host functions for the stretch markers and the markers of takes.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/rpp/stretch_markers.hpp"
#include "headless/rpp/take_markers.hpp"
#include "headless/workstation/text.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace headless::functions {
namespace {

using rpp::StretchMarker;
using rpp::StretchMarkers;

constexpr double lowest = std::numeric_limits<double>::lowest();
constexpr double highest = std::numeric_limits<double>::max();

bool has(const StretchMarkers& markers, int index) {
    return index >= 0 && static_cast<std::size_t>(index) < markers.size();
}

int count_stretch_markers(const project::Take& take) {
    return static_cast<int>(rpp::stretch_markers(take).size());
}

// The next marker after the position that the caller has put there.
int next_index(const StretchMarkers& markers, const double* position) {
    const double after = position ? *position : 0.0;
    const auto found = std::ranges::find_if(
        markers, [&](const StretchMarker& marker) { return marker.position_seconds > after; });
    return found == markers.end() ? -1 : static_cast<int>(found - markers.begin());
}

int get_stretch_marker(const project::Take& take, int index, double* position, double* source) {
    const StretchMarkers markers = rpp::stretch_markers(take);
    const int found = index < 0 ? next_index(markers, position) : index;
    if (!has(markers, found))
        return -1;
    const StretchMarker& marker = markers[static_cast<std::size_t>(found)];
    put(position, marker.position_seconds);
    put(source, marker.source_seconds);
    return found;
}

// Between what the neighbours have, which may be in disorder.
double between(double value, double low, double high) { return std::max(low, std::min(value, high)); }

int add_stretch_marker(project::Take& take, StretchMarkers& markers, StretchMarker marker) {
    const auto next =
        std::ranges::upper_bound(markers, marker.position_seconds, {}, &StretchMarker::position_seconds);
    const bool is_taken = next != markers.begin() && (next - 1)->position_seconds == marker.position_seconds;
    if (is_taken)
        return -1;
    marker.source_seconds =
        between(marker.source_seconds, next == markers.begin() ? lowest : (next - 1)->source_seconds,
                next == markers.end() ? highest : next->source_seconds);
    const auto added = markers.insert(next, marker);
    const auto index = static_cast<int>(added - markers.begin());
    rpp::set_stretch_markers(take, markers);
    return index;
}

int set_stretch_marker(project::Take& take, int index, double position, double* source) {
    StretchMarkers markers = rpp::stretch_markers(take);
    if (!std::isfinite(position) || (source && !std::isfinite(*source)))
        return -1;
    if (index < 0) {
        const double wanted = source ? *source : rpp::source_seconds_at(take, markers, position);
        return add_stretch_marker(take, markers, {position, wanted});
    }
    if (!has(markers, index))
        return -1;
    const auto marker = markers.begin() + index;
    const bool is_first = index == 0;
    const bool is_last = marker + 1 == markers.end();
    marker->position_seconds = between(position, is_first ? lowest : (marker - 1)->position_seconds,
                                       is_last ? highest : (marker + 1)->position_seconds);
    if (source)
        marker->source_seconds = between(*source, is_first ? lowest : (marker - 1)->source_seconds,
                                         is_last ? highest : (marker + 1)->source_seconds);
    rpp::set_stretch_markers(take, markers);
    return index;
}

int delete_stretch_markers(project::Take& take, int index, int* count) {
    StretchMarkers markers = rpp::stretch_markers(take);
    const int wanted = count ? *count : 1;
    if (!has(markers, index) || wanted <= 0)
        return 0;
    const auto first = markers.begin() + index;
    const auto deleted = std::min<std::ptrdiff_t>(wanted, markers.end() - first);
    markers.erase(first, first + deleted);
    rpp::set_stretch_markers(take, markers);
    return static_cast<int>(deleted);
}

double get_slope(const project::Take& take, int index) {
    const StretchMarkers markers = rpp::stretch_markers(take);
    return has(markers, index) ? markers[static_cast<std::size_t>(index)].slope : 0.0;
}

// The last marker has no stretch after it.
bool set_slope(project::Take& take, int index, double slope) {
    StretchMarkers markers = rpp::stretch_markers(take);
    if (!has(markers, index) || !has(markers, index + 1) || !std::isfinite(slope))
        return false;
    markers[static_cast<std::size_t>(index)].slope = std::clamp(slope, -1.0, 1.0);
    rpp::set_stretch_markers(take, markers);
    return true;
}

int count_take_markers(const project::Take& take) { return static_cast<int>(rpp::take_markers(take).size()); }

double get_take_marker(const project::Take& take, int index, char* name, int name_size, int* color) {
    const auto markers = rpp::take_markers(take);
    const auto place = static_cast<std::size_t>(index); // past the end if the index is negative
    workstation::copy_text(place < markers.size() ? markers[place].name : "", name, name_size);
    put(color, place < markers.size() ? markers[place].color : 0);
    return place < markers.size() ? markers[place].position_seconds : -1.0;
}

// A marker without a position goes to what the item's beginning plays.
int set_take_marker(project::Take& take, int index, const char* name, double* position, int* color) {
    if (position && !std::isfinite(*position))
        return -1;
    const std::string text = workstation::to_string(name);
    if (index < 0) {
        const double at = position ? *position : take.start_offset_seconds;
        return static_cast<int>(rpp::add_take_marker(take, {at, text, color ? *color : 0}));
    }
    rpp::TakeMarkerChange change{.name = text};
    if (position)
        change.position_seconds = *position;
    if (color)
        change.color = *color;
    const auto changed = rpp::change_take_marker(take, static_cast<std::size_t>(index), change);
    return changed ? static_cast<int>(*changed) : -1;
}

bool delete_take_marker(project::Take& take, int index) {
    return rpp::erase_take_marker(take, static_cast<std::size_t>(index));
}

} // namespace

std::span<const workstation::HostFunction> take_marker_functions() {
    static const workstation::HostFunction table[] = {
        {"GetTakeNumStretchMarkers",
         host_function<count_stretch_markers>("take", "Number of stretch markers")},
        {"GetTakeStretchMarker", host_function<get_stretch_marker>(
                                     "take,idx,posOut,srcposOutOptional",
                                     "The stretch marker of that index, -1 if there is none: where it is "
                                     "in the item, times the play rate, and in the source")},
        {"SetTakeStretchMarker", host_function<set_stretch_marker>(
                                     "take,idx,pos,srcposInOptional",
                                     "Moves a stretch marker; index -1 makes a new one. Its index, or -1")},
        {"DeleteTakeStretchMarkers",
         host_function<delete_stretch_markers>(
             "take,idx,countInOptional", "Deletes stretch markers from that index on; how many it were")},
        {"GetTakeStretchMarkerSlope",
         host_function<get_slope>("take,idx", "How the rate changes up to the next stretch marker, -1 to 1")},
        {"SetTakeStretchMarkerSlope",
         host_function<set_slope>("take,idx,slope",
                                  "Sets how the rate changes up to the next stretch marker, -1 to 1")},
        {"GetNumTakeMarkers", host_function<count_take_markers>("take", "Number of markers in the take")},
        {"GetTakeMarker",
         host_function<get_take_marker>("take,idx,nameOut,nameOut_sz,colorOutOptional",
                                        "The take's marker of that index, by its time in the source; -1 if "
                                        "there is none")},
        {"SetTakeMarker",
         host_function<set_take_marker>("take,idx,nameIn,srcposInOptional,colorInOptional",
                                        "Changes a marker of the take; index -1 makes a new one. Its index")},
        {"DeleteTakeMarker",
         host_function<delete_take_marker>("take,idx", "Deletes the take's marker of that index")},
    };
    return table;
}

} // namespace headless::functions
