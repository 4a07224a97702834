// Host functions that make, delete, split and move items and takes.

#include "headless/functions/adapter.hpp"
#include "headless/functions/tables.hpp"
#include "headless/rpp/item_edges.hpp"
#include "headless/rpp/midi_item.hpp"

namespace headless::functions {
namespace {

project::Item* add_item(project::Track& track) { return &track.add_item(0.0, 0.0); }

project::Take* add_take(project::Item& item) {
    return &item.add_take(project::Source{.file = {}, .type = project::Source::empty_type}, "");
}

bool delete_item(project::Track& track, const project::Item& item) {
    if (&item.track() != &track)
        return false;
    track.erase_item(item);
    return true;
}

project::Item* split(project::Item& item, double seconds) { return rpp::split_item(item, seconds); }

bool move_to_track(project::Item& item, project::Track& track) {
    const bool is_master = &track == &track.project().master();
    if (&item.track() == &track || is_master)
        return false;
    item.move_to(track);
    return true;
}

bool set_edges(project::Item& item, double start, double end) { return rpp::set_edges(item, start, end); }

project::Item* make_midi_item(project::Track& track, double start, double end, bool* in_quarter_notes) {
    const project::TempoMap& map = track.project().tempo_map;
    if (in_quarter_notes && *in_quarter_notes)
        return &rpp::add_midi_item(track, map.seconds_at(start), map.seconds_at(end));
    return &rpp::add_midi_item(track, start, end);
}

bool update_lanes(const project::Project&) { return true; }

} // namespace

std::span<const workstation::HostFunction> item_edit_functions() {
    static const workstation::HostFunction table[] = {
        {"AddMediaItemToTrack",
         host_function<add_item>("tr", "Makes an item without takes and without length at 0")},
        {"AddTakeToMediaItem", host_function<add_take>("item", "Adds a take that has nothing to play yet")},
        {"DeleteTrackMediaItem", host_function<delete_item>("tr,it", "Deletes the track's item")},
        {"SplitMediaItem",
         host_function<split>(
             "item,position",
             "Splits the item at a time in seconds; the part after it, nil if it lies outside")},
        {"MoveMediaItemToTrack", host_function<move_to_track>(
                                     "item,desttr", "Moves the item to another track; false if it is there")},
        {"BR_SetItemEdges",
         host_function<set_edges>("item,startTime,endTime",
                                  "Moves the edges; what the item plays stays where it is in time")},
        {"CreateNewMIDIItemInProj",
         host_function<make_midi_item>("track,starttime,endtime,qnInOptional",
                                       "Makes an item with an empty MIDI take, in seconds or quarter notes")},
        {"UpdateItemLanes", host_function<update_lanes>("proj", "Items stay in their lanes: does nothing")},
    };
    return table;
}

} // namespace headless::functions
