// Host functions that look up, read, change and select items.

#include "common/native_color.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/attributes.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

#include <algorithm>

namespace headless::functions {
namespace {

int count_items(const project::Project& project) { return static_cast<int>(project.item_count()); }

project::Item* get_item(const project::Project& project, int index) {
    return project.item(static_cast<std::size_t>(index));
}

int count_selected_items(const project::Project& project) {
    return static_cast<int>(project.selected_items().size());
}

project::Item* get_selected_item(const project::Project& project, int index) {
    return project.selected_items().at(static_cast<std::size_t>(index));
}

int count_track_items(const project::Track& track) { return static_cast<int>(track.items().size()); }

project::Item* get_track_item(const project::Track& track, int index) {
    return element(track.items(), index);
}

project::Track* get_item_track(const project::Item& item) { return &item.track(); }

bool delete_item(project::Track& track, const project::Item& item) {
    if (&item.track() != &track)
        return false;
    track.erase_item(item);
    return true;
}

project::Project* get_item_project(const project::Item& item) { return &item.track().project(); }

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
    {"I_CUSTOMCOLOR", [](const project::Item& item) { return static_cast<double>(used_color(item.color)); },
     [](project::Item& item, double value) { item.color = used_color(to_int(value)); }},
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

void set_item_selected(project::Item& item, bool selected) { item.set_selected(selected); }

bool is_item_selected(const project::Item& item) { return item.selected(); }

bool set_item_position(Workstation& workstation, project::Item& item, double seconds, bool) {
    return set_value<attributes>(workstation, item, "D_POSITION", seconds);
}

bool set_item_length(Workstation& workstation, project::Item& item, double seconds, bool) {
    return set_value<attributes>(workstation, item, "D_LENGTH", seconds);
}

void select_all_items(project::Project& project, bool selected) { project.select_all_items(selected); }

int count_takes(const project::Item& item) { return static_cast<int>(item.takes().size()); }

project::Take* get_take(const project::Item& item, int index) {
    return item.take(static_cast<std::size_t>(index));
}

project::Take* get_active_take(const project::Item& item) { return item.active_take(); }

/// An index below 0 is the active take.
project::Take* get_take_or_active(const project::Item& item, int index) {
    return index < 0 ? item.active_take() : get_take(item, index);
}

} // namespace

std::span<const workstation::HostFunction> item_functions() {
    static const workstation::HostFunction table[] = {
        {"CountMediaItems", host_function<count_items>("proj", "Number of items")},
        {"GetMediaItem",
         host_function<get_item>("proj,itemidx", "The item of that index, counted from 0, track by track")},
        {"CountSelectedMediaItems", host_function<count_selected_items>("proj", "Number of selected items")},
        {"GetSelectedMediaItem",
         host_function<get_selected_item>("proj,selitem", "The selected item of that index, counted from 0")},
        {"CountTrackMediaItems", host_function<count_track_items>("track", "Number of items on the track")},
        {"GetTrackMediaItem",
         host_function<get_track_item>("tr,itemidx", "The track's item of that index, counted from 0")},
        {"GetTrackNumMediaItems", host_function<count_track_items>("track", "Number of items on the track")},
        {"GetMediaItem_Track", host_function<get_item_track>("item", "The track that the item is on")},
        {"GetMediaItemTrack", host_function<get_item_track>("item", "The track that the item is on")},
        {"DeleteTrackMediaItem", host_function<delete_item>("tr,it", "Deletes the track's item")},
        {"GetItemProjectContext", host_function<get_item_project>("item", "The project of the item")},
        {"GetMediaItemInfo_Value",
         host_function<get_value<attributes>>(
             "item,parmname", "D_POSITION, D_LENGTH, D_SNAPOFFSET, D_VOL, B_MUTE, B_MUTE_ACTUAL, B_LOOPSRC, "
                              "B_ALLTAKESPLAY, B_UISEL, "
                              "I_CURTAKE, I_CUSTOMCOLOR, IP_ITEMNUMBER, P_TRACK or P_PROJECT")},
        {"SetMediaItemInfo_Value",
         host_function<set_value<attributes>>(
             "item,parmname,newvalue", "Sets what GetMediaItemInfo_Value gives, but for the keys with P")},
        {"SetMediaItemSelected",
         host_function<set_item_selected>("item,selected", "Selects or deselects the item")},
        {"IsMediaItemSelected", host_function<is_item_selected>("item", "Whether the item is selected")},
        {"SetMediaItemPosition",
         host_function<set_item_position>("item,position,refreshUI", "Moves the item, to a time in seconds")},
        {"SetMediaItemLength",
         host_function<set_item_length>("item,length,refreshUI", "Sets the item's length in seconds")},
        {"SelectAllMediaItems",
         host_function<select_all_items>("proj,selected", "Selects or deselects every item")},
        {"CountTakes", host_function<count_takes>("item", "Number of takes")},
        {"GetMediaItemNumTakes", host_function<count_takes>("item", "Number of takes")},
        {"GetTake", host_function<get_take>("item,takeidx", "The take of that index, counted from 0")},
        {"GetMediaItemTake",
         host_function<get_take_or_active>(
             "item,tk", "The take of that index, counted from 0, or the active one for -1")},
        {"GetActiveTake", host_function<get_active_take>("item", "The active take, nil for an empty item")},
    };
    return table;
}

} // namespace headless::functions
