#pragma once
// Operations on a single item: run a host action and keep the selection, render the active take, and switch
// off all envelopes of the active take. Each takes the item, or its zero-based number in a project or among
// the selected items. If the item is missing, each returns false and changes nothing.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"
#include "host_api/sws_functions.hpp"

namespace mk_api::action {

/// Runs a host action with this item as the only selected one, then restores the selection and redraws.
/// @returns true; the host does not report the result of an action
MK_EXPORT bool ActionMediaItemSelectKeep(MediaItem* item, int cmdID);
MK_EXPORT bool ActionMediaIdSelectKeep(ReaProject* projID, int itemID, int cmdID);
MK_EXPORT bool ActionSelectedMediaIdSelectKeep(ReaProject* projID, int selectItemID, int cmdID);

} // namespace mk_api::action

namespace mk_api::render {

/// Renders the active take to a new take, which becomes active and keeps the old take's name. An item with
/// several takes is first cropped to its active take.
/// @returns false also if there is no active take
MK_EXPORT bool RenderMediaItemActiveTake(MediaItem* item);
MK_EXPORT bool RenderMediaIdActiveTake(ReaProject* projID, int itemID);
MK_EXPORT bool RenderSelectedMediaIdActiveTake(ReaProject* projID, int selectItemID);

} // namespace mk_api::render

namespace mk_api::envelope {

/// The extension's functions, looked up again at every call that needs them; null if missing. The ride has
/// its own.
extern MK_EXPORT sws::EnvAlloc* BR_EnvAlloc;
extern MK_EXPORT sws::EnvGetProperties* BR_EnvGetProperties;
extern MK_EXPORT sws::EnvSetProperties* BR_EnvSetProperties;
extern MK_EXPORT sws::EnvFree* BR_EnvFree;

/// Makes every envelope of the active take inactive and hidden. Points and other properties stay.
/// @returns false, after showing a message, if the SWS extension is missing
MK_EXPORT bool SetMediaItemEnvelopeAllOFF(MediaItem* item);
MK_EXPORT bool SetMediaIdEnvelopeAllOFF(ReaProject* projID, int itemID);
MK_EXPORT bool SetSelectedMediaIdEnvelopeAllOFF(ReaProject* projID, int itemID);

} // namespace mk_api::envelope
