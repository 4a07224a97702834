#pragma once
// The automatic volume ride: an item's level is read, a gain decided for each 10 ms window, the gains written
// as the active take's volume envelope, and the result rendered to a new take. Needs the SWS extension.

#include "host/export.hpp"
#include "host/host_types.hpp"

#include <vector>

namespace mk_api::RIDESCRIBER {

/// Rides an item. Its own volume is not touched; the selection is what it was.
/// @param ratioType  0 cuts the loudest windows lightest, 3 hardest
/// @returns true when ridden and handed to the host to render, also for an item without level. False: SWS is
/// missing,
///          which a message says, or there is no item or no active take, and nothing has changed; or the host
///          gives no volume envelope, with the take's envelopes switched off by then.
/// @throws std::bad_alloc, with the selection as it then stands
MK_EXPORT bool SetMediaItemRIDESCRIBER(MediaItem* item, int ratioType);

/// The same for the item of a zero-based number in the project, or among the selected items; false for no
/// item.
MK_EXPORT bool SetMediaIdRIDESCRIBER(ReaProject* projID, int itemID, int ratioType);
MK_EXPORT bool SetSelectedMediaIdRIDESCRIBER(ReaProject* projID, int selectItemID, int ratioType);

/// Rides each item of a list, whatever the result for the one before.
/// @returns 0, or 1 when an exception ended it, with the items before that one ridden
MK_EXPORT int SetMediaItemListRIDESCRIBER(std::vector<MediaItem*> items, int ratioType);

} // namespace mk_api::RIDESCRIBER
