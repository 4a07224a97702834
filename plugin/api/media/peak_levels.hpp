#pragma once
// The level of an item's active take, one value per millisecond, as plain numbers. The ride works on these
// levels, and the peak records are made from them.

#include "host_api/host_types.hpp"

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace mk_api::mediaItem {

/// Upper and lower peak of one millisecond, in dB of their magnitudes. The linear value is rounded to four
/// decimals first, then its decibels are, halves up. Never below -80.
struct PeakLevel {
    double max_db;
    double min_db;
};

/// Returns the time of a millisecond's level in seconds from the item's start.
inline double peak_time(std::size_t index) { return static_cast<double>(index) * 0.001; }

/// Receives the next levels of an item, out of `total` in all.
using PeakLevelVisitor = std::function<void(std::span<const PeakLevel> levels, std::size_t total)>;

/// Passes the item's levels to `visit`, one for each millisecond of its length, as the host delivers them.
/// @returns the same as read_peak_levels; if the host delivered nothing, the levels are those of silence
/// @throws std::bad_alloc
bool visit_peak_levels(MediaItem* item, const PeakLevelVisitor& visit);

/// Appends the item's levels, one for each millisecond of its length.
/// @returns false with `levels` unchanged if there is no item, no take or no length, or if the host delivered
/// nothing
/// @throws std::bad_alloc
bool read_peak_levels(MediaItem* item, std::vector<PeakLevel>& levels);

} // namespace mk_api::mediaItem
