// Host functions that look up, read, change and select items.

#include "headless/host/attributes.hpp"
#include "headless/host/door.hpp"

#include <cstdint>

namespace headless {
namespace {

MediaItem* handle_or_null(Item* item) { return item ? Workstation::handle(*item) : nullptr; }

int count_items(Workstation& workstation, ReaProject* handle) {
    const Project* project = workstation.live(handle);
    return project ? static_cast<int>(project->item_count()) : 0;
}

MediaItem* get_item(Workstation& workstation, ReaProject* handle, int index) {
    const Project* project = workstation.live(handle);
    return handle_or_null(project ? project->item(static_cast<std::size_t>(index)) : nullptr);
}

int count_selected_items(Workstation& workstation, ReaProject* handle) {
    const Project* project = workstation.live(handle);
    return project ? static_cast<int>(project->selected_items().size()) : 0;
}

MediaItem* get_selected_item(Workstation& workstation, ReaProject* handle, int index) {
    const Project* project = workstation.live(handle);
    return handle_or_null(project ? project->selected_items().at(static_cast<std::size_t>(index)) : nullptr);
}

int count_track_items(Workstation& workstation, MediaTrack* handle) {
    const Track* track = workstation.live(handle);
    return track ? static_cast<int>(track->items().size()) : 0;
}

MediaItem* get_track_item(Workstation& workstation, MediaTrack* handle, int index) {
    const Track* track = workstation.live(handle);
    const bool exists = track && index >= 0 && static_cast<std::size_t>(index) < track->items().size();
    return exists ? Workstation::handle(*track->items()[static_cast<std::size_t>(index)]) : nullptr;
}

MediaTrack* get_item_track(Workstation& workstation, MediaItem* handle) {
    const Item* item = workstation.live(handle);
    return item ? Workstation::handle(item->track()) : nullptr;
}

bool delete_item(Workstation& workstation, MediaTrack* track_handle, MediaItem* item_handle) {
    Track* track = workstation.live(track_handle);
    const Item* item = workstation.live(item_handle);
    if (!track || !item || &item->track() != track) {
        return false;
    }
    track->erase_item(*item);
    return true;
}

ReaProject* get_item_project(Workstation& workstation, MediaItem* handle) {
    const Item* item = workstation.live(handle);
    return item ? Workstation::handle(item->track().project()) : nullptr;
}

double project_address(const Item& item) {
    return static_cast<double>(reinterpret_cast<std::uintptr_t>(&item.track().project()));
}

constexpr Attribute<Item> attributes[] = {
    {"P_PROJECT", project_address, nullptr},
    {"D_POSITION", [](const Item& item) { return item.position_seconds(); },
     [](Item& item, double value) { item.set_position_seconds(value); }},
    {"D_LENGTH", [](const Item& item) { return item.length_seconds(); },
     [](Item& item, double value) { item.set_length_seconds(value); }},
    {"D_SNAPOFFSET", [](const Item& item) { return item.snap_offset_seconds; },
     [](Item& item, double value) { item.snap_offset_seconds = value; }},
    {"D_VOL", [](const Item& item) { return item.volume; },
     [](Item& item, double value) { item.volume = value; }},
    {"B_MUTE", [](const Item& item) { return item.mute ? 1.0 : 0.0; },
     [](Item& item, double value) { item.mute = value != 0.0; }},
    {"B_LOOPSRC", [](const Item& item) { return item.loop ? 1.0 : 0.0; },
     [](Item& item, double value) { item.loop = value != 0.0; }},
    {"B_UISEL", [](const Item& item) { return item.selected() ? 1.0 : 0.0; },
     [](Item& item, double value) { item.set_selected(value != 0.0); }},
};

double get_item_value(Workstation& workstation, MediaItem* handle, const char* key) {
    return read_attribute<Item>(attributes, workstation.live(handle), key);
}

bool set_item_value(Workstation& workstation, MediaItem* handle, const char* key, double value) {
    return write_attribute<Item>(attributes, workstation.live(handle), key, value);
}

void set_item_selected(Workstation& workstation, MediaItem* handle, bool selected) {
    if (Item* item = workstation.live(handle)) {
        item->set_selected(selected);
    }
}

bool is_item_selected(Workstation& workstation, MediaItem* handle) {
    const Item* item = workstation.live(handle);
    return item && item->selected();
}

bool set_item_position(Workstation& workstation, MediaItem* handle, double seconds, bool) {
    return set_item_value(workstation, handle, "D_POSITION", seconds);
}

bool set_item_length(Workstation& workstation, MediaItem* handle, double seconds, bool) {
    return set_item_value(workstation, handle, "D_LENGTH", seconds);
}

void select_all_items(Workstation& workstation, ReaProject* handle, bool selected) {
    if (Project* project = workstation.live(handle)) {
        project->select_all_items(selected);
    }
}

int count_takes(Workstation& workstation, MediaItem* handle) {
    const Item* item = workstation.live(handle);
    return item ? static_cast<int>(item->takes().size()) : 0;
}

MediaItem_Take* get_take(Workstation& workstation, MediaItem* handle, int index) {
    const Item* item = workstation.live(handle);
    Take* take = item ? item->take(static_cast<std::size_t>(index)) : nullptr;
    return take ? Workstation::handle(*take) : nullptr;
}

MediaItem_Take* get_active_take(Workstation& workstation, MediaItem* handle) {
    const Item* item = workstation.live(handle);
    Take* take = item ? item->active_take() : nullptr;
    return take ? Workstation::handle(*take) : nullptr;
}

/// Below 0 the active one.
MediaItem_Take* get_take_or_active(Workstation& workstation, MediaItem* handle, int index) {
    return index < 0 ? get_active_take(workstation, handle) : get_take(workstation, handle, index);
}

} // namespace

std::span<const HostFunction> item_functions() {
    static const HostFunction table[] = {
        host_function<count_items, "proj", "Number of items">("CountMediaItems"),
        host_function<get_item, "proj,itemidx", "The item of that index, counted from 0, track by track">(
            "GetMediaItem"),
        host_function<count_selected_items, "proj", "Number of selected items">("CountSelectedMediaItems"),
        host_function<get_selected_item, "proj,selitem", "The selected item of that index, counted from 0">(
            "GetSelectedMediaItem"),
        host_function<count_track_items, "track", "Number of items on the track">("CountTrackMediaItems"),
        host_function<get_track_item, "tr,itemidx", "The track's item of that index, counted from 0">(
            "GetTrackMediaItem"),
        host_function<count_track_items, "track", "Number of items on the track">("GetTrackNumMediaItems"),
        host_function<get_item_track, "item", "The track that the item is on">("GetMediaItem_Track"),
        host_function<get_item_track, "item", "The track that the item is on">("GetMediaItemTrack"),
        host_function<delete_item, "tr,it", "Deletes the track's item">("DeleteTrackMediaItem"),
        host_function<get_item_project, "item", "The project of the item">("GetItemProjectContext"),
        host_function<get_item_value, "item,parmname",
                      "D_POSITION, D_LENGTH, D_SNAPOFFSET, D_VOL, B_MUTE, B_LOOPSRC, B_UISEL or P_PROJECT">(
            "GetMediaItemInfo_Value"),
        host_function<set_item_value, "item,parmname,newvalue",
                      "Sets what GetMediaItemInfo_Value gives, but for P_PROJECT">("SetMediaItemInfo_Value"),
        host_function<set_item_selected, "item,selected", "Selects or deselects the item">(
            "SetMediaItemSelected"),
        host_function<is_item_selected, "item", "Whether the item is selected">("IsMediaItemSelected"),
        host_function<set_item_position, "item,position,refreshUI", "Moves the item, to a time in seconds">(
            "SetMediaItemPosition"),
        host_function<set_item_length, "item,length,refreshUI", "Sets the item's length in seconds">(
            "SetMediaItemLength"),
        host_function<select_all_items, "proj,selected", "Selects or deselects every item">(
            "SelectAllMediaItems"),
        host_function<count_takes, "item", "Number of takes">("CountTakes"),
        host_function<count_takes, "item", "Number of takes">("GetMediaItemNumTakes"),
        host_function<get_take, "item,takeidx", "The take of that index, counted from 0">("GetTake"),
        host_function<get_take_or_active, "item,tk",
                      "The take of that index, counted from 0, or the active one for -1">("GetMediaItemTake"),
        host_function<get_active_take, "item", "The active take, nil for an empty item">("GetActiveTake"),
    };
    return table;
}

} // namespace headless
