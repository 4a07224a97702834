// Host functions that look up, read, change and select items.

#include "headless/functions/attributes.hpp"
#include "headless/functions/door.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/text.hpp"

#include <algorithm>

namespace headless::functions {
namespace {

MediaItem* handle_or_null(project::Item* item) {
    return item ? workstation::Workstation::handle(*item) : nullptr;
}

int count_items(workstation::Workstation& workstation, ReaProject* handle) {
    const project::Project* project = workstation.live(handle);
    return project ? static_cast<int>(project->item_count()) : 0;
}

MediaItem* get_item(workstation::Workstation& workstation, ReaProject* handle, int index) {
    const project::Project* project = workstation.live(handle);
    return handle_or_null(project ? project->item(static_cast<std::size_t>(index)) : nullptr);
}

int count_selected_items(workstation::Workstation& workstation, ReaProject* handle) {
    const project::Project* project = workstation.live(handle);
    return project ? static_cast<int>(project->selected_items().size()) : 0;
}

MediaItem* get_selected_item(workstation::Workstation& workstation, ReaProject* handle, int index) {
    const project::Project* project = workstation.live(handle);
    return handle_or_null(project ? project->selected_items().at(static_cast<std::size_t>(index)) : nullptr);
}

int count_track_items(workstation::Workstation& workstation, MediaTrack* handle) {
    const project::Track* track = workstation.live(handle);
    return track ? static_cast<int>(track->items().size()) : 0;
}

MediaItem* get_track_item(workstation::Workstation& workstation, MediaTrack* handle, int index) {
    const project::Track* track = workstation.live(handle);
    const bool exists = track && index >= 0 && static_cast<std::size_t>(index) < track->items().size();
    return exists ? workstation::Workstation::handle(*track->items()[static_cast<std::size_t>(index)])
                  : nullptr;
}

MediaTrack* get_item_track(workstation::Workstation& workstation, MediaItem* handle) {
    const project::Item* item = workstation.live(handle);
    return item ? workstation::Workstation::handle(item->track()) : nullptr;
}

bool delete_item(workstation::Workstation& workstation, MediaTrack* track_handle, MediaItem* item_handle) {
    project::Track* track = workstation.live(track_handle);
    const project::Item* item = workstation.live(item_handle);
    if (!track || !item || &item->track() != track)
        return false;
    track->erase_item(*item);
    return true;
}

ReaProject* get_item_project(workstation::Workstation& workstation, MediaItem* handle) {
    const project::Item* item = workstation.live(handle);
    return item ? workstation::Workstation::handle(item->track().project()) : nullptr;
}

double number_on_track(const project::Item& item) {
    const auto& items = item.track().items();
    const auto comes_before = [](const project::Item* left, const project::Item* right) {
        return left->comes_before(*right);
    };
    const auto place =
        std::ranges::lower_bound(items, &item, comes_before, &std::unique_ptr<project::Item>::get);
    return static_cast<double>(place - items.begin());
}

double active_take_number(const project::Item& item) {
    const auto& takes = item.takes();
    const auto place = std::ranges::find(takes, item.active_take(), &std::unique_ptr<project::Take>::get);
    return place == takes.end() ? 0.0 : static_cast<double>(place - takes.begin());
}

void set_active_take_number(project::Item& item, double value) {
    if (const project::Take* take = item.take(static_cast<std::size_t>(to_int(value))))
        item.set_active_take(*take);
}

constexpr Attribute<project::Item> rows[] = {
    {"P_PROJECT", [](const project::Item& item) { return address_of(&item.track().project()); }, nullptr},
    {"P_TRACK", [](const project::Item& item) { return address_of(&item.track()); }, nullptr},
    {"IP_ITEMNUMBER", number_on_track, nullptr},
    {"I_CURTAKE", active_take_number, set_active_take_number},
    {"I_CUSTOMCOLOR",
     [](const project::Item& item) { return static_cast<double>(workstation::used_color(item.color)); },
     [](project::Item& item, double value) { item.color = workstation::used_color(to_int(value)); }},
    {"D_POSITION", [](const project::Item& item) { return item.position_seconds(); },
     [](project::Item& item, double value) { item.set_position_seconds(value); }},
    {"D_LENGTH", [](const project::Item& item) { return item.length_seconds(); },
     [](project::Item& item, double value) { item.set_length_seconds(value); }},
    {"D_SNAPOFFSET", [](const project::Item& item) { return item.snap_offset_seconds; },
     [](project::Item& item, double value) { item.snap_offset_seconds = value; }},
    {"D_VOL", [](const project::Item& item) { return item.volume; },
     [](project::Item& item, double value) { item.volume = value; }},
    {"B_MUTE", [](const project::Item& item) { return item.mute ? 1.0 : 0.0; },
     [](project::Item& item, double value) { item.mute = value != 0.0; }},
    {"B_MUTE_ACTUAL", [](const project::Item& item) { return item.mute ? 1.0 : 0.0; },
     [](project::Item& item, double value) { item.mute = value != 0.0; }},
    {"B_ALLTAKESPLAY", [](const project::Item& item) { return item.plays_all_takes ? 1.0 : 0.0; },
     [](project::Item& item, double value) { item.plays_all_takes = value != 0.0; }},
    {"B_LOOPSRC", [](const project::Item& item) { return item.loop ? 1.0 : 0.0; },
     [](project::Item& item, double value) { item.loop = value != 0.0; }},
    {"B_UISEL", [](const project::Item& item) { return item.selected() ? 1.0 : 0.0; },
     [](project::Item& item, double value) { item.set_selected(value != 0.0); }},
};

constexpr Attributes<project::Item> attributes{"GetMediaItemInfo_Value", "SetMediaItemInfo_Value", rows};

double get_item_value(workstation::Workstation& workstation, MediaItem* handle, const char* key) {
    return read_attribute(workstation, attributes, workstation.live(handle), key);
}

bool set_item_value(workstation::Workstation& workstation, MediaItem* handle, const char* key, double value) {
    return write_attribute(workstation, attributes, workstation.live(handle), key, value);
}

void set_item_selected(workstation::Workstation& workstation, MediaItem* handle, bool selected) {
    if (project::Item* item = workstation.live(handle))
        item->set_selected(selected);
}

bool is_item_selected(workstation::Workstation& workstation, MediaItem* handle) {
    const project::Item* item = workstation.live(handle);
    return item && item->selected();
}

bool set_item_position(workstation::Workstation& workstation, MediaItem* handle, double seconds, bool) {
    return set_item_value(workstation, handle, "D_POSITION", seconds);
}

bool set_item_length(workstation::Workstation& workstation, MediaItem* handle, double seconds, bool) {
    return set_item_value(workstation, handle, "D_LENGTH", seconds);
}

void select_all_items(workstation::Workstation& workstation, ReaProject* handle, bool selected) {
    if (project::Project* project = workstation.live(handle))
        project->select_all_items(selected);
}

int count_takes(workstation::Workstation& workstation, MediaItem* handle) {
    const project::Item* item = workstation.live(handle);
    return item ? static_cast<int>(item->takes().size()) : 0;
}

MediaItem_Take* get_take(workstation::Workstation& workstation, MediaItem* handle, int index) {
    const project::Item* item = workstation.live(handle);
    project::Take* take = item ? item->take(static_cast<std::size_t>(index)) : nullptr;
    return take ? workstation::Workstation::handle(*take) : nullptr;
}

MediaItem_Take* get_active_take(workstation::Workstation& workstation, MediaItem* handle) {
    const project::Item* item = workstation.live(handle);
    project::Take* take = item ? item->active_take() : nullptr;
    return take ? workstation::Workstation::handle(*take) : nullptr;
}

/// An index below 0 is the active take.
MediaItem_Take* get_take_or_active(workstation::Workstation& workstation, MediaItem* handle, int index) {
    return index < 0 ? get_active_take(workstation, handle) : get_take(workstation, handle, index);
}

} // namespace

std::span<const workstation::HostFunction> item_functions() {
    static const workstation::HostFunction table[] = {
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
                      "D_POSITION, D_LENGTH, D_SNAPOFFSET, D_VOL, B_MUTE, B_MUTE_ACTUAL, B_LOOPSRC, "
                      "B_ALLTAKESPLAY, B_UISEL, "
                      "I_CURTAKE, I_CUSTOMCOLOR, IP_ITEMNUMBER, P_TRACK or P_PROJECT">(
            "GetMediaItemInfo_Value"),
        host_function<set_item_value, "item,parmname,newvalue",
                      "Sets what GetMediaItemInfo_Value gives, but for the keys with P">(
            "SetMediaItemInfo_Value"),
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

} // namespace headless::functions
