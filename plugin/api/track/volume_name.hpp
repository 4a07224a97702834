#pragma once
// A track's volume in decibels, and its name. Each has the same members as the state properties: by track, by
// number, by number among the selected tracks. All return false on failure and show no message.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"

namespace mk_api::track {

/// Reads the track's name as the host shows it: at most its first 1,023 bytes, cut to `nameOut_sz` - 1 bytes.
/// @returns false with `nameOut` unwritten if the host returns no name
MK_EXPORT bool GetTrackItemName(MediaTrack* track, char* nameOut, int nameOut_sz);
MK_EXPORT bool GetTrackIdName(ReaProject* projID, int trackID, char* nameOut, int nameOut_sz);
MK_EXPORT bool GetSelectedTrackIdName(ReaProject* projID, int trackID, char* nameOut, int nameOut_sz);

/// Sets the name.
/// @returns false if the host rejects it; false without calling the host if there is no track
MK_EXPORT bool SetTrackItemName(MediaTrack* track, const char* setName);
MK_EXPORT bool SetTrackIdName(ReaProject* projID, int trackID, const char* setName);
MK_EXPORT bool SetSelectedTrackIdName(ReaProject* projID, int selectTrackID, const char* setName);

} // namespace mk_api::track

namespace MK_FELSPAR {

/// Reads the volume in dB, rounded to 2 decimals; minus infinity for silence.
/// @returns true; by number, false with `volumeOut` unwritten if there is no track
MK_EXPORT bool GetTrackItemVolume(MediaTrack* track, double* volumeOut);
MK_EXPORT bool GetTrackIdVolume(ReaProject* projID, int trackID, double* volumeOut);
MK_EXPORT bool GetSelectedTrackIdVolume(ReaProject* projID, int selectTrackID, double* volumeOut);

/// Sets the volume in dB, unrounded, and redraws.
/// @returns true; by number, false if there is no track
MK_EXPORT bool SetTrackItemVolume(MediaTrack* track, double setVolume);
MK_EXPORT bool SetTrackIdVolume(ReaProject* projID, int trackID, double setVolume);
MK_EXPORT bool SetSelectedTrackIdVolume(ReaProject* projID, int selectTrackID, double setVolume);

/// Adds dB to the volume and redraws.
/// @returns true; by number, false if there is no track
MK_EXPORT bool SetTrackItemAddVolume(MediaTrack* track, double addVolume);
MK_EXPORT bool SetTrackIdAddVolume(ReaProject* projID, int trackID, double addVolume);
MK_EXPORT bool SetSelectedTrackIdAddVolume(ReaProject* projID, int selectTrackID, double addVolume);

} // namespace MK_FELSPAR
