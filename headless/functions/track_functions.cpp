// Host functions that look up, read, change, insert and delete tracks.

#include "common/native_color.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/attributes.hpp"
#include "headless/functions/c_guid.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/functions/track_names.hpp"
#include "headless/workstation/track_commands.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
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

bool get_track_name(const project::Track& track, char* buffer, int size) {
    workstation::copy_text(displayed_name(track), buffer, size);
    return true;
}

project::Track* get_selected_track_2(const project::Project& project, int index, bool wants_master) {
    const bool has_master = wants_master && project.master().selected();
    if (index < 0)
        return nullptr;
    if (has_master && index == 0)
        return &project.master();
    return get_selected_track(project, has_master ? index - 1 : index);
}

project::Track* get_last_touched_track(Workstation& workstation) {
    return workstation.track_session.last_touched(workstation.project());
}

chunk::Guid id_of(project::Track& track) {
    if (!is_master(track) && !track.id)
        track.id = track.project().guids.next();
    return track.id;
}

// The bytes stay until the next call.
void* get_track_guid(project::Track& track) {
    static std::array<std::uint8_t, 16> kept;
    put_c_guid(id_of(track), kept.data());
    return kept.data();
}

const char* get_track_guid_text(project::Track& track) {
    static std::string kept;
    kept = chunk::text_of(id_of(track));
    return kept.c_str();
}

void copy_track_guid(project::Track& track, char* buffer, int size) {
    workstation::copy_text(get_track_guid_text(track), buffer, size);
}

project::Track* find_track_by_guid(project::Project& project, const char* text) {
    const auto id = chunk::guid_of(workstation::to_string(text));
    if (!id)
        return nullptr;
    if (!*id)
        return &project.master();
    for (const auto& track : project.tracks())
        if (id_of(*track) == *id)
            return track.get();
    return nullptr;
}

bool reorder_selected_tracks(Workstation& workstation, int before, int mode) {
    using Nesting = project::Project::Nesting;
    project::Project& project = workstation.project();
    const auto selected = project.selected_tracks().all();
    if (selected.empty())
        return false;
    const Nesting nesting = mode == 1   ? Nesting::in_folder
                            : mode == 2 ? Nesting::as_previous
                                        : Nesting::as_next;
    project.move_tracks(selected, static_cast<std::size_t>(std::max(before, 0)), nesting);
    return true;
}

int get_track_color(const project::Track& track) { return track.color; }

void set_track_color(project::Track& track, int color) { track.color = color | color_in_use; }

void set_track_selected(project::Track& track, bool selected) { track.set_selected(selected); }

bool is_track_selected(const project::Track& track) { return track.selected(); }

// Without a track none is selected.
void set_only_track_selected(Workstation& workstation, project::Track* track) {
    workstation::select_only(workstation, track);
}

// Tracks have no default effects or envelopes here, so both kinds of insertion are the same.
void insert_track_in(project::Project& project, int index, int) {
    project.insert_track(static_cast<std::size_t>(index < 0 ? 0 : index));
}

void insert_track_at_index(Workstation& workstation, int index, bool) {
    insert_track_in(workstation.project(), index, 0);
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
        {"GetSelectedTrack2", host_function<get_selected_track_2>(
                                  "proj,seltrackidx,wantmaster",
                                  "The selected track of that index; a selected master is the first")},
        {"GetLastTouchedTrack", host_function<get_last_touched_track>(
                                    "", "The track that was last selected alone, nil if there is none")},
        {"GetTrackGUID", host_function<get_track_guid, get_track_guid_text>("tr", "The track's identifier")},
        {"BR_GetMediaTrackGUID",
         host_function<copy_track_guid>("track,guidStringOut,guidStringOut_sz", "The track's identifier")},
        {"BR_GetMediaTrackByGUID",
         host_function<find_track_by_guid>("proj,guidStringIn",
                                           "The track with that identifier, nil if there is none")},
        {"ReorderSelectedTracks",
         host_function<reorder_selected_tracks>("beforeTrackIdx,makePrevFolder",
                                                "Moves the selected tracks to before the track of that "
                                                "index; 1: into the track before it, 2: into "
                                                "the folder that the track before it ends")},
        {"GetParentTrack",
         host_function<get_parent_track>("track", "The folder track around the track, nil at top level")},
        {"GetTrackDepth", host_function<get_track_depth>("track", "Number of folders around the track")},
        {"GetTrackName", host_function<get_track_name>("track,bufOut,bufOut_sz",
                                                       "The name; \"Track N\" for a track without one")},
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
        {"InsertTrackInProject",
         host_function<insert_track_in>("proj,idx,flags", "Makes a track of that index")},
        {"DeleteTrack", host_function<delete_track>("tr", "Deletes the track with its items")},
    };
    return table;
}

} // namespace headless::functions
