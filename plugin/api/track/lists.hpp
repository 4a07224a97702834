#pragma once
// Lists of tracks: all tracks, the children of a track, tracks with a given name, and their details. Lists
// are in project order and are appended to the caller's list unless stated otherwise.

#include "host_api/export.hpp"
#include "object/records.hpp"

#include <string>
#include <vector>

namespace mk_api::track {

/// Appends the direct children of a track.
/// @param count  the size of the list afterwards
/// @returns true
MK_EXPORT bool GetTrackItemChildList(MediaTrack* parent, std::vector<MediaTrack*>& children, int& count);

/// Appends a record with `Track`, `Name` and `Index` for each track, or for each selected one. `Index` counts
/// among all tracks.
MK_EXPORT void GetTrackListDetail(ReaProject* project, std::vector<mk_object::TrackDetail>& tracks);
MK_EXPORT void GetSelectedTrackListDetail(ReaProject* project, std::vector<mk_object::TrackDetail>& tracks);

} // namespace mk_api::track

namespace MK_FELSPAR {

/// Replaces the contents of the list with all tracks of the project.
/// @returns true
MK_EXPORT bool GetTrackItemList(ReaProject* project, std::vector<MediaTrack*>& tracks);

/// Appends the direct children of the track with that number. If there is no such track, appends the
/// top-level tracks.
/// @param count  the size of the list afterwards
/// @returns true
MK_EXPORT bool GetTrackIdChildList(ReaProject* project, int trackID, std::vector<MediaTrack*>& children,
                                   int& count);

/// The same for a number among the selected tracks.
/// @returns whether the list is not empty afterwards
MK_EXPORT bool GetSelectedTrackIdChildList(ReaProject* project, int selectTrackID,
                                           std::vector<MediaTrack*>& children);

/// Appends a record with `Track` and `Depth` for each track.
/// @returns false for a project without tracks
MK_EXPORT bool GetTrackDepthList(ReaProject* project, std::vector<mk_object::TrackDetail>& tracks);

/// Appends a record with `Track` and `Index` for each track with that name, byte for byte, or for each track
/// whose name contains at least the first 1,023 bytes of the string, ignoring the case of ASCII letters.
/// @returns true
MK_EXPORT bool GetSamePerfectTrackNameList(ReaProject* project, std::string searchName,
                                           std::vector<mk_object::TrackDetail>& tracks);
MK_EXPORT bool GetIncludePerfectTrackNameList(ReaProject* project, std::string searchName,
                                              std::vector<mk_object::TrackDetail>& tracks);

} // namespace MK_FELSPAR
