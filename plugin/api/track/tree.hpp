#pragma once
// A track's place in the project: its number, its depth in the folder tree, and inserting tracks into the
// tree. Numbers are zero-based positions; depths count the folders above a track. The host keeps relative
// depths in a flat list, where the last track of a folder closes it; here depths are absolute. Failures show
// no message.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"

namespace mk_api::track {

/// Finds the first selected track, and its number among all tracks.
/// @returns null if none is selected. `trackIdOut` is unwritten if the track is not in the list.
MK_EXPORT MediaTrack* GetSelectedTrackFirstInfo(ReaProject* projID, int* trackIdOut);

/// Finds a track's number in its project.
/// @returns false, and the number 0, for a track that is in no project
MK_EXPORT bool GetTrackItemIndex(MediaTrack* track, int* trackIdOut);

/// Reads a track's depth. For a missing track the host decides the value.
/// @returns true
MK_EXPORT bool GetTrackItemDepth(MediaTrack* track, int* depthOut);
MK_EXPORT bool GetTrackIdDepth(ReaProject* projID, int trackID, int* depthOut);
MK_EXPORT bool GetSelectedTrackIdDepth(ReaProject* projID, int selectTrackID, int* depthOut);

/// Moves a track and everything under it to a depth. The tracks after it stay where they are. The first track
/// stays at the top, and a track that is in no project is not changed; both cases return true.
/// @returns false, with nothing changed, for a depth more than one level below the previous track
MK_EXPORT bool SetTrackItemDepth(MediaTrack* track, int setDepth);
MK_EXPORT bool SetTrackIdDepth(ReaProject* projID, int trackID, int setDepth);
MK_EXPORT bool SetSelectedTrackIdDepth(ReaProject* projID, int selectTrackID, int setDepth);

/// Inserts a track. The track always goes into the current project, whatever `projID` is.
/// @returns the track with that number in `projID`, or its last one if there are fewer
MK_EXPORT MediaTrack* InsertTrackId(ReaProject* projID, int trackID);

/// Inserts a track directly after the last child of `parentTrack`, at the same depth, or as the first child.
/// @param trackIdOut  the new track's number
/// @returns null, with nothing changed, if there is no parent
MK_EXPORT MediaTrack* InsertChildTrack(MediaTrack* parentTrack, int* trackIdOut);

/// Returns the first track with exactly that name, or adds a new one with that name at the end.
/// @param trackIdOut  its number
MK_EXPORT MediaTrack* InsertTrackSearchUniqueOnly(ReaProject* projID, const char* setTrackName,
                                                  int* trackIdOut);

} // namespace mk_api::track

namespace MK_FELSPAR {

/// Deletes the track with that number among all tracks (`trackType` 0) or the selected ones (1).
/// @returns false if there is none
MK_EXPORT bool DeleteTrackIdSelect(ReaProject* projID, int trackID, int trackType);

} // namespace MK_FELSPAR
