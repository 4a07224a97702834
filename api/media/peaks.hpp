#pragma once
// The level of an item as records for scripts, one for each millisecond.

#include "host/export.hpp"
#include "host/host_types.hpp"
#include "object/records.hpp"

#include <vector>

namespace mk_api::mediaItem {

/// Levels of the item's active take over one channel.
/// @param peaks  appended to: round(length / 1 ms) records. `Time` in seconds from the item's start,
/// `MaxPeak` and
///               `MinPeak` in dB of their magnitudes at four decimals, never below -80, above 0 over full
///               scale. The cells of all records are one block, which lives until the last of them is gone.
/// @returns false, `peaks` untouched: no item, no take, no length, nothing delivered by the host
/// @throws std::bad_alloc, with `peaks` untouched
MK_EXPORT bool GetMediaItemPeakList(MediaItem* item, std::vector<mk_object::mk_Peak>& peaks);

} // namespace mk_api::mediaItem

namespace MK_FELSPAR {

/// The same, for an item that is given or found by number in the project or among the selected items.
MK_EXPORT bool GetMediaItemPeakList(MediaItem* item, std::vector<mk_object::mk_Peak>& peaks);
MK_EXPORT bool GetMediaIdPeakList(ReaProject* project, int index, std::vector<mk_object::mk_Peak>& peaks);
MK_EXPORT bool GetSelectedMediaIdPeakList(ReaProject* project, int index,
                                          std::vector<mk_object::mk_Peak>& peaks);

} // namespace MK_FELSPAR
