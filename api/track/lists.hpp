#pragma once
// Lists of tracks: all, the children of one, those of a name, with their details. Lists come in the order of
// the project and are appended to what the caller's list holds, unless said otherwise.

#include "host/export.hpp"
#include "object/records.hpp"

#include <string>
#include <vector>

namespace mk_api::track {

/// A track's project, as the host keeps it with the track.
ReaProject* project_of(MediaTrack* track);

/// Appends the direct children of a track. @param count  the list's size then @returns true
MK_EXPORT bool GetTrackItemChildList(MediaTrack* parent, std::vector<MediaTrack*>& children, int& count);

/// Appends a record of `Track`, `Name` and `Index` for each track, or each selected one. `Index` counts among
/// all tracks.
MK_EXPORT void GetTrackListDetail(ReaProject* project, std::vector<mk_object::TrackDetail>& tracks);
MK_EXPORT void GetSelectedTrackListDetail(ReaProject* project, std::vector<mk_object::TrackDetail>& tracks);

} // namespace mk_api::track

namespace MK_FELSPAR {

/// Replaces what the list holds by all tracks of the project. @returns true
MK_EXPORT bool GetTrackItemList(ReaProject* project, std::vector<MediaTrack*>& tracks);

/// Appends the direct children of the track of that number; those of no track are the tracks at the top.
/// @param count  the list's size then @returns true
MK_EXPORT bool GetTrackIdChildList(ReaProject* project, int trackID, std::vector<MediaTrack*>& children,
                                   int& count);

/// The same for a number among the selected tracks. @returns whether the list then holds any
MK_EXPORT bool GetSelectedTrackIdChildList(ReaProject* project, int selectTrackID,
                                           std::vector<MediaTrack*>& children);

/// Appends a record of `Track` and `Depth` for each track. @returns false for a project without tracks
MK_EXPORT bool GetTrackDepthList(ReaProject* project, std::vector<mk_object::TrackDetail>& tracks);

/// Appends a record of `Track` and `Index` for each track of that name, byte for byte, or whose name contains
/// at least the text's first 1,023 bytes, ignoring the case of ASCII letters. @returns true
MK_EXPORT bool GetSamePerfectTrackNameList(ReaProject* project, std::string searchName,
                                           std::vector<mk_object::TrackDetail>& tracks);
MK_EXPORT bool GetIncludePerfectTrackNameList(ReaProject* project, std::string searchName,
                                              std::vector<mk_object::TrackDetail>& tracks);

} // namespace MK_FELSPAR
