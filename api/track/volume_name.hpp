#pragma once
// A track's volume in decibels, and its name. The members are those of the state properties: by track, by
// number, by number among the selected tracks. All return false on failure and show nothing.

#include "host/export.hpp"
#include "host/host_types.hpp"

namespace mk_api::track {

/// The track's name as the host shows it, at most 1,023 bytes of it, cut to `nameOut_sz` - 1 bytes.
/// @returns false with `nameOut` unwritten when the host gives no name
MK_EXPORT bool GetTrackItemName(MediaTrack* track, char* nameOut, int nameOut_sz);
MK_EXPORT bool GetTrackIdName(ReaProject* projID, int trackID, char* nameOut, int nameOut_sz);
MK_EXPORT bool GetSelectedTrackIdName(ReaProject* projID, int trackID, char* nameOut, int nameOut_sz);

/// @returns the host's word on the write; false without a call when there is no track
MK_EXPORT bool SetTrackItemName(MediaTrack* track, const char* setName);
MK_EXPORT bool SetTrackIdName(ReaProject* projID, int trackID, const char* setName);
MK_EXPORT bool SetSelectedTrackIdName(ReaProject* projID, int selectTrackID, const char* setName);

} // namespace mk_api::track

namespace MK_FELSPAR {

/// The volume in dB, rounded to 2 digits; minus infinity for silence. @returns true; by number, false with
/// `volumeOut` unwritten when there is no track
MK_EXPORT bool GetTrackItemVolume(MediaTrack* track, double* volumeOut);
MK_EXPORT bool GetTrackIdVolume(ReaProject* projID, int trackID, double* volumeOut);
MK_EXPORT bool GetSelectedTrackIdVolume(ReaProject* projID, int selectTrackID, double* volumeOut);

/// Sets the volume in dB, unrounded, and redraws. @returns true; by number, false when there is no track
MK_EXPORT bool SetTrackItemVolume(MediaTrack* track, double setVolume);
MK_EXPORT bool SetTrackIdVolume(ReaProject* projID, int trackID, double setVolume);
MK_EXPORT bool SetSelectedTrackIdVolume(ReaProject* projID, int selectTrackID, double setVolume);

/// Adds dB to the volume and redraws. @returns true; by number, false when there is no track
MK_EXPORT bool SetTrackItemAddVolume(MediaTrack* track, double addVolume);
MK_EXPORT bool SetTrackIdAddVolume(ReaProject* projID, int trackID, double addVolume);
MK_EXPORT bool SetSelectedTrackIdAddVolume(ReaProject* projID, int selectTrackID, double addVolume);

} // namespace MK_FELSPAR
