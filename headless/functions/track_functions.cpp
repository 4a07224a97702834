// Host functions that look up, read, change, insert and delete tracks.

#include "common/native_color.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/attributes.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

#include <cstring>
#include <string>

namespace headless::functions {
namespace {

int count_tracks(const project::Project& project) { return static_cast<int>(project.tracks().size()); }

int count_active_tracks(Workstation& workstation) { return count_tracks(workstation.project()); }

project::Track* get_track(const project::Project& project, int index) {
    return project.track(static_cast<std::size_t>(index));
}

project::Track* get_master_track(const project::Project& project) { return &project.master(); }

int count_selected_tracks(const project::Project& project) {
    return static_cast<int>(project.selected_tracks().size());
}

int count_selected_tracks_2(const project::Project& project, bool wants_master) {
    return count_selected_tracks(project) + (wants_master && project.master().selected() ? 1 : 0);
}

project::Track* get_selected_track(const project::Project& project, int index) {
    return project.selected_tracks().at(static_cast<std::size_t>(index));
}

project::Track* get_parent_track(const project::Track& track) { return track.parent(); }

int get_track_depth(const project::Track& track) { return track.depth(); }

bool is_master(const project::Track& track) { return &track == &track.project().master(); }

std::string displayed_name(const project::Track& track) {
    if (is_master(track))
        return "MASTER";
    return track.name.empty() ? "Track " + std::to_string(track.index() + 1) : track.name;
}

bool get_track_name(const project::Track& track, char* buffer, int size) {
    workstation::copy_text(displayed_name(track), buffer, size);
    return true;
}

bool get_set_track_string(Workstation& workstation, project::Track& track, const char* key, char* text,
                          bool is_set) {
    if (!key || !text)
        return false;
    // Areas that are marked on the screen; there are none.
    const bool is_razor_edit = std::strncmp(key, "P_RAZOREDITS", std::strlen("P_RAZOREDITS")) == 0;
    if (is_razor_edit && (!is_set || !*text)) {
        *text = '\0';
        return true;
    }
    if (std::strcmp(key, "P_NAME") != 0) {
        report_unknown_key(workstation, "GetSetMediaTrackInfo_String", key);
        return false;
    }
    if (is_master(track))
        return false;
    get_or_set(track.name, text, is_set);
    return true;
}

// The number that users see; -1 for the master.
double track_number(const project::Track& track) {
    return is_master(track) ? -1.0 : static_cast<double>(track.index() + 1);
}

constexpr Attribute<project::Track> rows[] = {
    {"P_PROJECT", [](const project::Track& track) { return address_of(&track.project()); }, nullptr},
    {"P_PARTRACK", [](const project::Track& track) { return address_of(track.parent()); }, nullptr},
    {"IP_TRACKNUMBER", track_number, nullptr},
    {"B_MUTE", [](const project::Track& track) { return track.mute ? 1.0 : 0.0; },
     [](project::Track& track, double value) { track.mute = value != 0.0; }},
    {"I_SOLO", [](const project::Track& track) { return static_cast<double>(track.solo); },
     [](project::Track& track, double value) { track.solo = to_int(value); }},
    {"I_SELECTED", [](const project::Track& track) { return track.selected() ? 1.0 : 0.0; },
     [](project::Track& track, double value) { track.set_selected(value != 0.0); }},
    {"I_FOLDERDEPTH",
     [](const project::Track& track) { return static_cast<double>(track.folder_depth_change()); },
     [](project::Track& track, double value) { track.set_folder_depth_change(to_int(value)); }},
    {"I_CUSTOMCOLOR", [](const project::Track& track) { return static_cast<double>(track.color); },
     [](project::Track& track, double value) { track.color = used_color(to_int(value)); }},
    {"D_VOL", [](const project::Track& track) { return track.volume; },
     [](project::Track& track, double value) { track.volume = value; }},
    {"D_PAN", [](const project::Track& track) { return track.pan; },
     [](project::Track& track, double value) { track.pan = value; }},
};

constexpr Attributes<project::Track> attributes{"GetMediaTrackInfo_Value", "SetMediaTrackInfo_Value", rows};

int get_track_color(const project::Track& track) { return track.color; }

void set_track_color(project::Track& track, int color) { track.color = color | color_in_use; }

void set_track_selected(project::Track& track, bool selected) { track.set_selected(selected); }

bool is_track_selected(const project::Track& track) { return track.selected(); }

// Without a track none is selected.
void set_only_track_selected(Workstation& workstation, project::Track* track) {
    const auto& selected = workstation.project().selected_tracks();
    while (selected.size() > 0)
        selected.at(selected.size() - 1)->set_selected(false);
    workstation.project().master().set_selected(false);
    if (track)
        track->set_selected(true);
}

// Tracks have no default effects or envelopes here, so both kinds of insertion are the same.
void insert_track_at_index(Workstation& workstation, int index, bool) {
    workstation.project().insert_track(static_cast<std::size_t>(index < 0 ? 0 : index));
}

void delete_track(const project::Track& track) { track.project().erase_track(track); }

} // namespace

std::span<const workstation::HostFunction> track_functions() {
    static const workstation::HostFunction table[] = {
        {"CountTracks", host_function<count_tracks>("proj", "Number of tracks, without the master")},
        {"GetNumTracks", host_function<count_active_tracks>("", "Number of tracks, without the master")},
        {"GetTrack", host_function<get_track>("proj,trackidx", "The track of that index, counted from 0")},
        {"GetMasterTrack", host_function<get_master_track>("proj", "The master track")},
        {"CountSelectedTracks",
         host_function<count_selected_tracks>("proj", "Number of selected tracks, without the master")},
        {"CountSelectedTracks2",
         host_function<count_selected_tracks_2>("proj,wantmaster", "Number of selected tracks")},
        {"GetSelectedTrack", host_function<get_selected_track>(
                                 "proj,seltrackidx", "The selected track of that index, counted from 0")},
        {"GetParentTrack",
         host_function<get_parent_track>("track", "The folder track around the track, nil at top level")},
        {"GetTrackDepth", host_function<get_track_depth>("track", "Number of folders around the track")},
        {"GetTrackName", host_function<get_track_name>("track,bufOut,bufOut_sz",
                                                       "The name; \"Track N\" for a track without one")},
        {"GetSetMediaTrackInfo_String",
         host_function<get_set_track_string>("tr,parmname,stringNeedBig,setNewValue",
                                             "Gets or sets P_NAME; P_RAZOREDITS is empty")},
        {"GetMediaTrackInfo_Value",
         host_function<get_value<attributes>>(
             "tr,parmname",
             "B_MUTE, I_SOLO, I_SELECTED, I_FOLDERDEPTH, I_CUSTOMCOLOR, D_VOL, D_PAN, IP_TRACKNUMBER, "
             "P_PARTRACK or P_PROJECT")},
        {"SetMediaTrackInfo_Value",
         host_function<set_value<attributes>>(
             "tr,parmname,newvalue", "Sets what GetMediaTrackInfo_Value gives, but for the keys with P")},
        {"GetTrackColor",
         host_function<get_track_color>("track", "Native colour with the flag 0x1000000, 0 for none")},
        {"SetTrackColor", host_function<set_track_color>(
                              "track,color", "Sets a native colour, with or without the flag 0x1000000")},
        {"SetTrackSelected",
         host_function<set_track_selected>("track,selected", "Selects or deselects the track")},
        {"IsTrackSelected", host_function<is_track_selected>("track", "Whether the track is selected")},
        {"SetOnlyTrackSelected",
         host_function<set_only_track_selected>("track", "Selects the track and no other")},
        {"InsertTrackAtIndex",
         host_function<insert_track_at_index>("idx,wantDefaults", "Makes a track of that index")},
        {"DeleteTrack", host_function<delete_track>("tr", "Deletes the track with its items")},
    };
    return table;
}

} // namespace headless::functions
