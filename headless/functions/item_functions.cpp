// Host functions that look up and select items.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

#include <cstddef>

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

project::Project* get_item_project(const project::Item& item) { return &item.track().project(); }

void set_item_selected(project::Item& item, bool selected) { item.set_selected(selected); }

bool is_item_selected(const project::Item& item) { return item.selected(); }

void select_all_items(project::Project& project, bool selected) { project.select_all_items(selected); }

int count_takes(const project::Item& item) { return static_cast<int>(item.takes().size()); }

// Callers see no take where a lane is empty.
project::Take* unless_empty(project::Take* take) { return take && !take->is_empty ? take : nullptr; }

project::Take* get_take(const project::Item& item, int index) {
    return unless_empty(item.take(static_cast<std::size_t>(index)));
}

project::Take* get_active_take(const project::Item& item) { return unless_empty(item.active_take()); }

/// An index below 0 is the active take.
project::Take* get_take_or_active(const project::Item& item, int index) {
    return index < 0 ? get_active_take(item) : get_take(item, index);
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
        {"GetItemProjectContext", host_function<get_item_project>("item", "The project of the item")},
        {"SetMediaItemSelected",
         host_function<set_item_selected>("item,selected", "Selects or deselects the item")},
        {"IsMediaItemSelected", host_function<is_item_selected>("item", "Whether the item is selected")},
        {"SelectAllMediaItems",
         host_function<select_all_items>("proj,selected", "Selects or deselects every item")},
        {"CountTakes", host_function<count_takes>("item", "Number of takes")},
        {"GetMediaItemNumTakes", host_function<count_takes>("item", "Number of takes")},
        {"GetTake", host_function<get_take>("item,takeidx",
                                            "The take of that index, counted from 0; nil for an empty lane")},
        {"GetMediaItemTake",
         host_function<get_take_or_active>(
             "item,tk", "The take of that index, counted from 0, or the active one for -1")},
        {"GetActiveTake", host_function<get_active_take>("item", "The active take, nil for an empty item")},
    };
    return table;
}

} // namespace headless::functions
