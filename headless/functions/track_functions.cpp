// Host functions that look up, read, change, insert and delete tracks.

#include "headless/functions/attributes.hpp"
#include "headless/functions/door.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/text.hpp"

#include <cstring>
#include <string>

namespace headless::functions {
namespace {

int count_tracks(workstation::Workstation& workstation, ReaProject* handle) {
    const project::Project* project = workstation.live(handle);
    return project ? static_cast<int>(project->tracks().size()) : 0;
}

MediaTrack* get_track(workstation::Workstation& workstation, ReaProject* handle, int index) {
    const project::Project* project = workstation.live(handle);
    project::Track* track = project ? project->track(static_cast<std::size_t>(index)) : nullptr;
    return track ? workstation::Workstation::handle(*track) : nullptr;
}

MediaTrack* get_master_track(workstation::Workstation& workstation, ReaProject* handle) {
    const project::Project* project = workstation.live(handle);
    return project ? workstation::Workstation::handle(project->master()) : nullptr;
}

int count_selected_tracks_2(workstation::Workstation& workstation, ReaProject* handle, bool wants_master) {
    const project::Project* project = workstation.live(handle);
    if (!project)
        return 0;
    const int count = static_cast<int>(project->selected_tracks().size());
    return wants_master && project->master().selected() ? count + 1 : count;
}

int count_selected_tracks(workstation::Workstation& workstation, ReaProject* handle) {
    return count_selected_tracks_2(workstation, handle, false);
}

MediaTrack* get_selected_track(workstation::Workstation& workstation, ReaProject* handle, int index) {
    const project::Project* project = workstation.live(handle);
    project::Track* track =
        project ? project->selected_tracks().at(static_cast<std::size_t>(index)) : nullptr;
    return track ? workstation::Workstation::handle(*track) : nullptr;
}

MediaTrack* get_parent_track(workstation::Workstation& workstation, MediaTrack* handle) {
    const project::Track* track = workstation.live(handle);
    project::Track* parent = track ? track->parent() : nullptr;
    return parent ? workstation::Workstation::handle(*parent) : nullptr;
}

int get_track_depth(workstation::Workstation& workstation, MediaTrack* handle) {
    const project::Track* track = workstation.live(handle);
    return track ? track->depth() : 0;
}

bool is_master(const project::Track& track) { return &track == &track.project().master(); }

bool get_track_name(workstation::Workstation& workstation, MediaTrack* handle, char* buffer, int size) {
    const project::Track* track = workstation.live(handle);
    if (!track)
        return false;
    if (is_master(*track))
        workstation::copy_text("MASTER", buffer, size);
    else if (track->name.empty())
        workstation::copy_text("Track " + std::to_string(track->index() + 1), buffer, size);
    else
        workstation::copy_text(track->name, buffer, size);
    return true;
}

bool get_set_track_string(workstation::Workstation& workstation, MediaTrack* handle, const char* key,
                          char* text, bool is_set) {
    project::Track* track = workstation.live(handle);
    if (!track || !key || !text)
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
    if (is_master(*track))
        return false;
    if (is_set)
        track->name = text;
    else
        workstation::copy_text(track->name, text, workstation::unsized_buffer_bytes);
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
     [](project::Track& track, double value) { track.color = workstation::used_color(to_int(value)); }},
    {"D_VOL", [](const project::Track& track) { return track.volume; },
     [](project::Track& track, double value) { track.volume = value; }},
    {"D_PAN", [](const project::Track& track) { return track.pan; },
     [](project::Track& track, double value) { track.pan = value; }},
};

constexpr Attributes<project::Track> attributes{"GetMediaTrackInfo_Value", "SetMediaTrackInfo_Value", rows};

double get_track_value(workstation::Workstation& workstation, MediaTrack* handle, const char* key) {
    return read_attribute(workstation, attributes, workstation.live(handle), key);
}

bool set_track_value(workstation::Workstation& workstation, MediaTrack* handle, const char* key,
                     double value) {
    return write_attribute(workstation, attributes, workstation.live(handle), key, value);
}

int get_track_color(workstation::Workstation& workstation, MediaTrack* handle) {
    const project::Track* track = workstation.live(handle);
    return track ? track->color : 0;
}

void set_track_color(workstation::Workstation& workstation, MediaTrack* handle, int color) {
    if (project::Track* track = workstation.live(handle))
        track->color = color | workstation::color_in_use;
}

void set_track_selected(workstation::Workstation& workstation, MediaTrack* handle, bool selected) {
    if (project::Track* track = workstation.live(handle))
        track->set_selected(selected);
}

void set_only_track_selected(workstation::Workstation& workstation, MediaTrack* handle) {
    const auto& selected = workstation.project().selected_tracks();
    while (selected.size() > 0)
        selected.at(selected.size() - 1)->set_selected(false);
    workstation.project().master().set_selected(false);
    set_track_selected(workstation, handle, true);
}

bool is_track_selected(workstation::Workstation& workstation, MediaTrack* handle) {
    const project::Track* track = workstation.live(handle);
    return track && track->selected();
}

int count_active_tracks(workstation::Workstation& workstation) { return count_tracks(workstation, nullptr); }

// Tracks have no default effects or envelopes here, so both kinds of insertion are the same.
void insert_track_at_index(workstation::Workstation& workstation, int index, bool) {
    workstation.project().insert_track(static_cast<std::size_t>(index < 0 ? 0 : index));
}

void delete_track(workstation::Workstation& workstation, MediaTrack* handle) {
    if (const project::Track* track = workstation.live(handle))
        track->project().erase_track(*track);
}

} // namespace

std::span<const workstation::HostFunction> track_functions() {
    static const workstation::HostFunction table[] = {
        host_function<count_tracks, "proj", "Number of tracks, without the master">("CountTracks"),
        host_function<count_active_tracks, "", "Number of tracks, without the master">("GetNumTracks"),
        host_function<get_track, "proj,trackidx", "The track of that index, counted from 0">("GetTrack"),
        host_function<get_master_track, "proj", "The master track">("GetMasterTrack"),
        host_function<count_selected_tracks, "proj", "Number of selected tracks, without the master">(
            "CountSelectedTracks"),
        host_function<count_selected_tracks_2, "proj,wantmaster", "Number of selected tracks">(
            "CountSelectedTracks2"),
        host_function<get_selected_track, "proj,seltrackidx",
                      "The selected track of that index, counted from 0">("GetSelectedTrack"),
        host_function<get_parent_track, "track", "The folder track around the track, nil at top level">(
            "GetParentTrack"),
        host_function<get_track_depth, "track", "Number of folders around the track">("GetTrackDepth"),
        host_function<get_track_name, "track,bufOut,bufOut_sz",
                      "The name; \"Track N\" for a track without one">("GetTrackName"),
        host_function<get_set_track_string, "tr,parmname,stringNeedBig,setNewValue",
                      "Gets or sets P_NAME; P_RAZOREDITS is empty">("GetSetMediaTrackInfo_String"),
        host_function<
            get_track_value, "tr,parmname",
            "B_MUTE, I_SOLO, I_SELECTED, I_FOLDERDEPTH, I_CUSTOMCOLOR, D_VOL, D_PAN, IP_TRACKNUMBER, "
            "P_PARTRACK or P_PROJECT">("GetMediaTrackInfo_Value"),
        host_function<set_track_value, "tr,parmname,newvalue",
                      "Sets what GetMediaTrackInfo_Value gives, but for the keys with P">(
            "SetMediaTrackInfo_Value"),
        host_function<get_track_color, "track", "Native colour with the flag 0x1000000, 0 for none">(
            "GetTrackColor"),
        host_function<set_track_color, "track,color",
                      "Sets a native colour, with or without the flag 0x1000000">("SetTrackColor"),
        host_function<set_track_selected, "track,selected", "Selects or deselects the track">(
            "SetTrackSelected"),
        host_function<is_track_selected, "track", "Whether the track is selected">("IsTrackSelected"),
        host_function<set_only_track_selected, "track", "Selects the track and no other">(
            "SetOnlyTrackSelected"),
        host_function<insert_track_at_index, "idx,wantDefaults", "Makes a track of that index">(
            "InsertTrackAtIndex"),
        host_function<delete_track, "tr", "Deletes the track with its items">("DeleteTrack"),
    };
    return table;
}

} // namespace headless::functions
