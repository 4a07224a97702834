#pragma once
// Operations on exactly one item: a host action with the selection kept, a render of the active take, and all
// envelopes of the active take switched off. Each takes the item, or its zero-based number in a project or
// among the selected items. A missing item is false, and nothing has changed.

#include "host/export.hpp"
#include "host/host_types.hpp"

namespace mk_api::action {

/// Runs a host action with this item as the only selected one, then restores the selection and redraws.
/// @returns true; the host reports no result of an action
MK_EXPORT bool ActionMediaItemSelectKeep(MediaItem* item, int cmdID);
MK_EXPORT bool ActionMediaIdSelectKeep(ReaProject* projID, int itemID, int cmdID);
MK_EXPORT bool ActionSelectedMediaIdSelectKeep(ReaProject* projID, int selectItemID, int cmdID);

} // namespace mk_api::action

namespace mk_api::render {

/// Renders the active take to a new take, which becomes the active one and bears the old one's name. An item
/// with several takes is cropped to its active take first. @returns false also when there is no active take
MK_EXPORT bool RenderMediaItemActiveTake(MediaItem* item);
MK_EXPORT bool RenderMediaIdActiveTake(ReaProject* projID, int itemID);
MK_EXPORT bool RenderSelectedMediaIdActiveTake(ReaProject* projID, int selectItemID);

} // namespace mk_api::render

namespace mk_api::envelope {

/// Makes every envelope of the active take inactive and hidden; points and other properties stay.
/// @returns false after a message when the SWS extension is missing
MK_EXPORT bool SetMediaItemEnvelopeAllOFF(MediaItem* item);
MK_EXPORT bool SetMediaIdEnvelopeAllOFF(ReaProject* projID, int itemID);
MK_EXPORT bool SetSelectedMediaIdEnvelopeAllOFF(ReaProject* projID, int itemID);

} // namespace mk_api::envelope
