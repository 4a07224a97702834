#pragma once
// The markers of a take, at moments of its source.

#include "headless/project/take.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace headless::rpp {

struct TakeMarker {
    double position_seconds = 0.0; ///< in the source
    std::string name{};
    int color = 0; ///< native with the flag 0x1000000, 0 for the default
};

/// In the order of positions.
std::vector<TakeMarker> take_markers(const project::Take& take);

/// Adds the marker. @returns its index
std::size_t add_take_marker(project::Take& take, const TakeMarker& marker);

/// What to change of a marker.
struct TakeMarkerChange {
    std::optional<double> position_seconds{};
    std::optional<std::string> name{};
    std::optional<int> color{};
};

/// @returns the marker's new index; empty if there is no marker of that index
std::optional<std::size_t> change_take_marker(project::Take& take, std::size_t index,
                                              const TakeMarkerChange& change);

/// @returns false if there is no marker of that index
bool erase_take_marker(project::Take& take, std::size_t index);

/// Removes the markers before `from_seconds`, and those at or after `to_seconds`, of the source.
void cut_take_markers(project::Take& take, double from_seconds, double to_seconds);

} // namespace headless::rpp
