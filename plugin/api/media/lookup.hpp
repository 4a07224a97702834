#pragma once
// Finds media items by number in the project, among the selected items, or on a track. Numbers are
// zero-based; a null project is the current one.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"

#include <vector>

namespace mk_api::mediaItem {

/// Returns the item with that number in the project (`type` 0) or among the selected items (1); null
/// otherwise.
MK_EXPORT MediaItem* GetMediaItemSelect(ReaProject* project, int index, int type);

/// Returns the item with that number on a track, which is looked up among all tracks (`type` 0) or the
/// selected ones (1); null otherwise.
MK_EXPORT MediaItem* GetMediaTrackItemSelect(ReaProject* project, int trackIndex, int itemIndex, int type);

/// Appends the project's selected items, in the host's order.
/// @returns 0
MK_EXPORT int GetSelectedMediaItems(ReaProject* project, std::vector<MediaItem*>& items);

/// Selects or deselects each item of the list, in order. Other items are not changed.
/// @returns 0
MK_EXPORT int SelectMediaItems(std::vector<MediaItem*> items, bool selected);

} // namespace mk_api::mediaItem
