#pragma once
// The automatic volume ride. It reads an item's level, decides a gain for each 10 ms window, writes the gains
// as the active take's volume envelope, and renders the result to a new take. Needs the SWS extension.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"
#include "host_api/sws_functions.hpp"

#include <vector>

namespace mk_api::RIDESCRIBER {

/// The extension's functions, looked up again in this order at every ride. A missing one is null, and those
/// after it keep their previous values.
extern MK_EXPORT sws::EnvAlloc* BR_EnvAlloc;
extern MK_EXPORT sws::EnvSortPoints* BR_EnvSortPoints;
extern MK_EXPORT sws::EnvCountPoints* BR_EnvCountPoints;
extern MK_EXPORT sws::EnvDeletePoint* BR_EnvDeletePoint;
extern MK_EXPORT sws::EnvFree* BR_EnvFree;
extern MK_EXPORT sws::EnvGetPoint* BR_EnvGetPoint;
extern MK_EXPORT sws::EnvSetPoint* BR_EnvSetPoint;
extern MK_EXPORT sws::EnvGetProperties* BR_EnvGetProperties;
extern MK_EXPORT sws::EnvSetProperties* BR_EnvSetProperties;

/// Rides an item. The item's own volume and the selection stay unchanged.
/// @param ratioType  0 cuts the loudest windows lightest, 3 hardest
/// @returns true if the item was ridden and passed to the host for rendering, also if the item has no level.
/// False with nothing changed if SWS is missing, which a message reports, or if there is no item or no active
/// take. False also if the host provides no volume envelope; the take's envelopes are then already switched
/// off.
/// @throws std::bad_alloc, with the selection as it then is
MK_EXPORT bool SetMediaItemRIDESCRIBER(MediaItem* item, int ratioType);

/// The same for the item with a zero-based number in the project, or among the selected items. Returns false
/// if there is no such item.
MK_EXPORT bool SetMediaIdRIDESCRIBER(ReaProject* projID, int itemID, int ratioType);
MK_EXPORT bool SetSelectedMediaIdRIDESCRIBER(ReaProject* projID, int selectItemID, int ratioType);

/// Rides each item of a list, whatever the result of the previous one.
/// @returns 0, or 1 if an exception ended it; the items before the failing one have then been ridden
MK_EXPORT int SetMediaItemListRIDESCRIBER(std::vector<MediaItem*> items, int ratioType);

} // namespace mk_api::RIDESCRIBER
