#pragma once
// Finds a track by number. Numbers are zero-based positions among all tracks or among the selected ones. A
// null project is the current one. The host owns the tracks; they are valid as long as they are in their
// project.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"

namespace mk_api::track {

/// Returns the track with that number among all tracks (`trackType` 0) or the selected ones (1).
/// @returns null past the end, and for any other `trackType`
MK_EXPORT MediaTrack* GetTrackItemSelect(ReaProject* projID, int trackID, int trackType);

/// Counts all tracks (`trackType` 0), or the selected ones including the master track (1). For any other type
/// the count is 0.
/// @returns true
MK_EXPORT bool GetTrackCountSelect(ReaProject* projID, int trackType, int* countOut);

} // namespace mk_api::track
