#pragma once
// The level of an item as records for scripts, one per millisecond.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"
#include "object/records.hpp"

#include <vector>

namespace mk_api::mediaItem {

/// Reads the levels of the item's active take on one channel.
/// @param peaks  receives round(length / 1 ms) further records. `Time` is in seconds from the item's start.
/// `MaxPeak` and `MinPeak` are in dB of their magnitudes, rounded to four decimals, never below -80, and
/// above 0 beyond full scale. The cells of all records are one block, which is freed with the last record.
/// @returns false with `peaks` unchanged if there is no item, no take or no length, or if the host delivered
/// nothing
/// @throws std::bad_alloc, with `peaks` unchanged
MK_EXPORT bool GetMediaItemPeakList(MediaItem* item, std::vector<mk_object::mk_Peak>& peaks);

} // namespace mk_api::mediaItem

namespace MK_FELSPAR {

/// The same for an item passed directly, or found by number in the project or among the selected items.
MK_EXPORT bool GetMediaItemPeakList(MediaItem* item, std::vector<mk_object::mk_Peak>& peaks);
MK_EXPORT bool GetMediaIdPeakList(ReaProject* project, int index, std::vector<mk_object::mk_Peak>& peaks);
MK_EXPORT bool GetSelectedMediaIdPeakList(ReaProject* project, int index,
                                          std::vector<mk_object::mk_Peak>& peaks);

} // namespace MK_FELSPAR
