#include "api/media/actions.hpp"

#include "api/media/lookup.hpp"
#include "api/media/on_item.hpp"
#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"
#include "sws/dependency.hpp"
#include "utility/numbers.hpp"

#include <string>
#include <utility>
#include <vector>

namespace mk_api {

using mediaItem::on_item;

bool action::ActionMediaItemSelectKeep(MediaItem* item, int cmdID) {
    if (!item)
        return false;
    auto* project = handle_from_value<ReaProject>(call(GetMediaItemInfo_Value, item, "P_PROJECT"));
    std::vector<MediaItem*> selected;
    // Downward, because deselecting an item shifts the numbers above it.
    for (int i = call(CountSelectedMediaItems, project) - 1; i >= 0; --i) {
        MediaItem* other = call(GetSelectedMediaItem, project, i);
        selected.push_back(other);
        call(SetMediaItemSelected, other, false);
    }
    call(SetMediaItemSelected, item, true);
    call(Main_OnCommandEx, cmdID, 0, project);
    call(SetMediaItemSelected, item, false);
    mediaItem::SelectMediaItems(std::move(selected), true);
    call(UpdateArrange);
    return true;
}

bool action::ActionMediaIdSelectKeep(ReaProject* projID, int itemID, int cmdID) {
    return on_item(Scope::all, Missing::fails, ActionMediaItemSelectKeep, projID, itemID, cmdID);
}

bool action::ActionSelectedMediaIdSelectKeep(ReaProject* projID, int selectItemID, int cmdID) {
    return on_item(Scope::selected, Missing::fails, ActionMediaItemSelectKeep, projID, selectItemID, cmdID);
}

namespace render {
namespace {

constexpr int crop_to_active_take = 40131;
constexpr int render_to_new_take = 41999;

} // namespace

bool RenderMediaItemActiveTake(MediaItem* item) {
    MediaItem_Take* take = item ? call(GetActiveTake, item) : nullptr;
    if (!take)
        return false;
    // A copy, because the host's text may not outlive the commands.
    std::string name = text_or_empty(call(GetTakeName, take));
    if (call(CountTakes, item) != 1)
        action::ActionMediaItemSelectKeep(item, crop_to_active_take);
    action::ActionMediaItemSelectKeep(item, render_to_new_take);
    call(GetSetMediaItemTakeInfo_String, call(GetActiveTake, item), "P_NAME", name.data(), true);
    return true;
}

bool RenderMediaIdActiveTake(ReaProject* projID, int itemID) {
    return on_item(Scope::all, Missing::fails, RenderMediaItemActiveTake, projID, itemID);
}

bool RenderSelectedMediaIdActiveTake(ReaProject* projID, int selectItemID) {
    return on_item(Scope::selected, Missing::fails, RenderMediaItemActiveTake, projID, selectItemID);
}

} // namespace render

namespace envelope {

sws::EnvAlloc* BR_EnvAlloc = nullptr;
sws::EnvGetProperties* BR_EnvGetProperties = nullptr;
sws::EnvSetProperties* BR_EnvSetProperties = nullptr;
sws::EnvFree* BR_EnvFree = nullptr;

namespace {

void bind_functions() {
    using dependency_manager::bind;
    bind(BR_EnvAlloc, "BR_EnvAlloc");
    bind(BR_EnvGetProperties, "BR_EnvGetProperties");
    bind(BR_EnvSetProperties, "BR_EnvSetProperties");
    bind(BR_EnvFree, "BR_EnvFree");
}

} // namespace

bool SetMediaItemEnvelopeAllOFF(MediaItem* item) {
    if (!dependency_manager::bound("MK_SetMediaItemRideScriber", bind_functions) || !item)
        return false;
    MediaItem_Take* take = call(GetActiveTake, item);
    const int count = call(CountTakeEnvelopes, take);
    for (int i = 0; i < count; ++i) {
        BR_Envelope* object = BR_EnvAlloc(call(GetTakeEnvelope, take, i), false);
        if (!object)
            continue;
        sws::set_in_use(BR_EnvGetProperties, BR_EnvSetProperties, object, false);
        BR_EnvFree(object, true);
    }
    return true;
}

bool SetMediaIdEnvelopeAllOFF(ReaProject* projID, int itemID) {
    return on_item(Scope::all, Missing::fails, SetMediaItemEnvelopeAllOFF, projID, itemID);
}

bool SetSelectedMediaIdEnvelopeAllOFF(ReaProject* projID, int itemID) {
    return on_item(Scope::selected, Missing::fails, SetMediaItemEnvelopeAllOFF, projID, itemID);
}

} // namespace envelope

} // namespace mk_api
