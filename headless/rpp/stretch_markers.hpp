#pragma once
// The stretch markers of a take: which moment of the source is heard when. Between two of them the source is
// played at a constant rate, or at one that rises or falls evenly.

#include "headless/project/take.hpp"

#include <string>
#include <vector>

namespace headless::rpp {

struct StretchMarker {
    double position_seconds = 0.0; ///< from the item's start, times the take's play rate
    double source_seconds = 0.0;   ///< in the source
    double slope = 0.0; ///< -1..1: up to the next marker, the rate goes from 1 - slope to 1 + slope
    std::string flag{}; ///< a further word in the file, empty if there is none
};

using StretchMarkers = std::vector<StretchMarker>;

/// In the order of positions.
StretchMarkers stretch_markers(const project::Take& take);

/// Replaces the take's stretch markers, which become one line.
void set_stretch_markers(project::Take& take, const StretchMarkers& markers);

/// The moment of the source that the markers put at that position; without any, the one that the take's start
/// offset puts there.
double source_seconds_at(const project::Take& take, const StretchMarkers& markers, double position_seconds);

/// Removes the markers outside of `from_seconds` to `to_seconds`. Where a stretch is cut, a marker at its edge keeps the rest as it
/// was.
void cut_stretch_markers(project::Take& take, double from_seconds, double to_seconds);

/// Moves all markers in the item; what they put there of the source goes along.
void shift_stretch_markers(project::Take& take, double seconds);

} // namespace headless::rpp
