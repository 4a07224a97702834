// Host functions that look up, read, change, insert and delete tracks.

#include "headless/host/attributes.hpp"
#include "headless/host/door.hpp"
#include "headless/host/text.hpp"

#include <cstdint>
#include <cstring>
#include <string>

namespace headless {
namespace {

int count_tracks(Workstation& workstation, ReaProject* handle) {
    const Project* project = workstation.live(handle);
    return project ? static_cast<int>(project->tracks().size()) : 0;
}

MediaTrack* get_track(Workstation& workstation, ReaProject* handle, int index) {
    const Project* project = workstation.live(handle);
    Track* track = project ? project->track(static_cast<std::size_t>(index)) : nullptr;
    return track ? Workstation::handle(*track) : nullptr;
}

MediaTrack* get_master_track(Workstation& workstation, ReaProject* handle) {
    const Project* project = workstation.live(handle);
    return project ? Workstation::handle(project->master()) : nullptr;
}

int count_selected_tracks_2(Workstation& workstation, ReaProject* handle, bool wants_master) {
    const Project* project = workstation.live(handle);
    if (!project) {
        return 0;
    }
    const int count = static_cast<int>(project->selected_tracks().size());
    return wants_master && project->master().selected() ? count + 1 : count;
}

int count_selected_tracks(Workstation& workstation, ReaProject* handle) {
    return count_selected_tracks_2(workstation, handle, false);
}

MediaTrack* get_selected_track(Workstation& workstation, ReaProject* handle, int index) {
    const Project* project = workstation.live(handle);
    Track* track = project ? project->selected_tracks().at(static_cast<std::size_t>(index)) : nullptr;
    return track ? Workstation::handle(*track) : nullptr;
}

MediaTrack* get_parent_track(Workstation& workstation, MediaTrack* handle) {
    const Track* track = workstation.live(handle);
    Track* parent = track ? track->parent() : nullptr;
    return parent ? Workstation::handle(*parent) : nullptr;
}

int get_track_depth(Workstation& workstation, MediaTrack* handle) {
    const Track* track = workstation.live(handle);
    return track ? track->depth() : 0;
}

bool is_master(const Track& track) { return &track == &track.project().master(); }

bool get_track_name(Workstation& workstation, MediaTrack* handle, char* buffer, int size) {
    const Track* track = workstation.live(handle);
    if (!track) {
        return false;
    }
    if (is_master(*track)) {
        copy_text("MASTER", buffer, size);
    } else if (track->name.empty()) {
        copy_text("Track " + std::to_string(track->index() + 1), buffer, size);
    } else {
        copy_text(track->name, buffer, size);
    }
    return true;
}

bool get_set_track_string(Workstation& workstation, MediaTrack* handle, const char* key, char* text,
                          bool is_set) {
    Track* track = workstation.live(handle);
    if (!track || !key || !text || std::strcmp(key, "P_NAME") != 0 || is_master(*track)) {
        return false;
    }
    if (is_set) {
        track->name = text;
    } else {
        copy_text(track->name, text, unsized_buffer_bytes);
    }
    return true;
}

// A colour whose flag is missing is stored as none.
int used_color(int color) { return (color & color_in_use) != 0 ? color : 0; }

double project_address(const Track& track) {
    return static_cast<double>(reinterpret_cast<std::uintptr_t>(&track.project()));
}

constexpr Attribute<Track> attributes[] = {
    {"P_PROJECT", project_address, nullptr},
    {"B_MUTE", [](const Track& track) { return track.mute ? 1.0 : 0.0; },
     [](Track& track, double value) { track.mute = value != 0.0; }},
    {"I_SOLO", [](const Track& track) { return static_cast<double>(track.solo); },
     [](Track& track, double value) { track.solo = to_int(value); }},
    {"I_SELECTED", [](const Track& track) { return track.selected() ? 1.0 : 0.0; },
     [](Track& track, double value) { track.set_selected(value != 0.0); }},
    {"I_FOLDERDEPTH", [](const Track& track) { return static_cast<double>(track.folder_depth_change()); },
     [](Track& track, double value) { track.set_folder_depth_change(to_int(value)); }},
    {"I_CUSTOMCOLOR", [](const Track& track) { return static_cast<double>(track.color); },
     [](Track& track, double value) { track.color = used_color(to_int(value)); }},
    {"D_VOL", [](const Track& track) { return track.volume; },
     [](Track& track, double value) { track.volume = value; }},
    {"D_PAN", [](const Track& track) { return track.pan; },
     [](Track& track, double value) { track.pan = value; }},
};

double get_track_value(Workstation& workstation, MediaTrack* handle, const char* key) {
    return read_attribute<Track>(attributes, workstation.live(handle), key);
}

bool set_track_value(Workstation& workstation, MediaTrack* handle, const char* key, double value) {
    return write_attribute<Track>(attributes, workstation.live(handle), key, value);
}

int get_track_color(Workstation& workstation, MediaTrack* handle) {
    const Track* track = workstation.live(handle);
    return track ? track->color : 0;
}

void set_track_color(Workstation& workstation, MediaTrack* handle, int color) {
    if (Track* track = workstation.live(handle)) {
        track->color = color | color_in_use;
    }
}

void set_track_selected(Workstation& workstation, MediaTrack* handle, bool selected) {
    if (Track* track = workstation.live(handle)) {
        track->set_selected(selected);
    }
}

void set_only_track_selected(Workstation& workstation, MediaTrack* handle) {
    const auto& selected = workstation.project().selected_tracks();
    while (selected.size() > 0) {
        selected.at(selected.size() - 1)->set_selected(false);
    }
    workstation.project().master().set_selected(false);
    set_track_selected(workstation, handle, true);
}

bool is_track_selected(Workstation& workstation, MediaTrack* handle) {
    const Track* track = workstation.live(handle);
    return track && track->selected();
}

int count_active_tracks(Workstation& workstation) { return count_tracks(workstation, nullptr); }

// Tracks have no default effects or envelopes here, so both kinds of insertion are the same.
void insert_track_at_index(Workstation& workstation, int index, bool) {
    workstation.project().insert_track(static_cast<std::size_t>(index < 0 ? 0 : index));
}

void delete_track(Workstation& workstation, MediaTrack* handle) {
    if (const Track* track = workstation.live(handle)) {
        track->project().erase_track(*track);
    }
}

} // namespace

std::span<const HostFunction> track_functions() {
    static const HostFunction table[] = {
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
        host_function<get_set_track_string, "tr,parmname,stringNeedBig,setNewValue", "Gets or sets P_NAME">(
            "GetSetMediaTrackInfo_String"),
        host_function<get_track_value, "tr,parmname",
                      "B_MUTE, I_SOLO, I_SELECTED, I_FOLDERDEPTH, I_CUSTOMCOLOR, D_VOL, D_PAN or P_PROJECT">(
            "GetMediaTrackInfo_Value"),
        host_function<set_track_value, "tr,parmname,newvalue",
                      "Sets what GetMediaTrackInfo_Value gives, but for P_PROJECT">(
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

} // namespace headless
