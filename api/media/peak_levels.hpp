#pragma once
// The level of an item's active take, millisecond by millisecond, as plain numbers: what the ride works on
// and what the peak records are made of.

#include "host/host_types.hpp"

#include <cstddef>
#include <vector>

namespace mk_api::mediaItem {

/// Upper and lower peak of one millisecond, in dB of their magnitudes: four decimals, never below -80.
struct PeakLevel {
    double max_db;
    double min_db;
};

/// Seconds from the item's start to a millisecond's level.
inline double peak_time(std::size_t index) { return static_cast<double>(index) * 0.001; }

/// Decibels of a peak's magnitude: first the linear value, then its decibels are rounded to four decimals,
/// halves up.
double peak_db(double peak);

/// Appends the item's levels, one for each millisecond of its length.
/// @returns false with `levels` untouched: no item, no take, no length, or nothing delivered by the host
/// @throws std::bad_alloc
bool read_peak_levels(MediaItem* item, std::vector<PeakLevel>& levels);

} // namespace mk_api::mediaItem
