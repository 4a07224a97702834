#pragma once
// A track's place in the project: its number, its depth in the folder tree, new tracks at a place in the
// tree. Numbers are zero-based positions; depths count the folders above a track. The host keeps relative
// depths in a flat list, in which the last track of a folder closes it; here depths are absolute. Failures
// show nothing.

#include "host/export.hpp"
#include "host/host_types.hpp"

namespace mk_api::track {

/// The first selected track, and its number among all tracks.
/// @returns null when none is selected. `trackIdOut` stays as it was when the track is not in the list.
MK_EXPORT MediaTrack* GetSelectedTrackFirstInfo(ReaProject* projID, int* trackIdOut);

/// A track's number in its project. @returns false, and the number 0, for a track that is in none
MK_EXPORT bool GetTrackItemIndex(MediaTrack* track, int* trackIdOut);

/// A track's depth. The host answers for a missing track. @returns true
MK_EXPORT bool GetTrackItemDepth(MediaTrack* track, int* depthOut);
MK_EXPORT bool GetTrackIdDepth(ReaProject* projID, int trackID, int* depthOut);
MK_EXPORT bool GetSelectedTrackIdDepth(ReaProject* projID, int selectTrackID, int* depthOut);

/// Moves a track, with all that lies under it, to a depth; the tracks behind stay where they are. The first
/// track stays at the top, and one that is in no project stays as it is: both are true.
/// @returns false, with nothing changed, for a depth more than one level below the track before
MK_EXPORT bool SetTrackItemDepth(MediaTrack* track, int setDepth);
MK_EXPORT bool SetTrackIdDepth(ReaProject* projID, int trackID, int setDepth);
MK_EXPORT bool SetSelectedTrackIdDepth(ReaProject* projID, int selectTrackID, int setDepth);

/// Inserts a track, in the current project whatever `projID` names.
/// @returns the track of that number in `projID`, or its last one when there are fewer
MK_EXPORT MediaTrack* InsertTrackId(ReaProject* projID, int trackID);

/// Inserts a track right behind the last child of `parentTrack`, at its depth, or as the first child.
/// @param trackIdOut  the new track's number
/// @returns null, with nothing done, for no parent
MK_EXPORT MediaTrack* InsertChildTrack(MediaTrack* parentTrack, int* trackIdOut);

/// The first track of exactly that name, or a new one of that name at the end.
/// @param trackIdOut  its number
MK_EXPORT MediaTrack* InsertTrackSearchUniqueOnly(ReaProject* projID, const char* setTrackName,
                                                  int* trackIdOut);

} // namespace mk_api::track

namespace MK_FELSPAR {

/// Deletes the track of that number among all tracks (`trackType` 0) or the selected ones (1). @returns false
/// for none
MK_EXPORT bool DeleteTrackIdSelect(ReaProject* projID, int trackID, int trackType);

} // namespace MK_FELSPAR
