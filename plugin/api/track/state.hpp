#pragma once
// A track's mute, solo, colour and selection. Each property has an `Item` member, which takes the track, and
// `Id` and `SelectedId` members, which take a number among all or among the selected tracks of a project
// (null: the current one). All return false on failure and show no message. The comments say where a failure
// leaves an output unwritten.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"

namespace MK_FELSPAR {

/// Reads the mute state, both as the output and as the result. If reading fails the result is false and
/// `muteOut` is unwritten, so only the output distinguishes an unmuted track from a missing one.
MK_EXPORT bool GetTrackItemMute(MediaTrack* track, bool* muteOut);
MK_EXPORT bool GetTrackIdMute(ReaProject* projID, int trackId, bool* muteOut);
MK_EXPORT bool GetSelectedTrackIdMute(ReaProject* projID, int selectTrackId, bool* muteOut);

/// Sets the mute state. A missing track is passed to the host, which decides the result.
/// @returns false if the host rejects it
MK_EXPORT bool SetTrackItemMute(MediaTrack* track, bool setMute);
MK_EXPORT bool SetTrackIdMute(ReaProject* projID, int trackID, bool setMute);
MK_EXPORT bool SetSelectedTrackIdMute(ReaProject* projID, int selectTrackID, bool setMute);

/// Unmutes every track of the project.
/// @returns true
MK_EXPORT bool SetTrackAllMuteOFF(ReaProject* projID);

/// Reads the solo state, both as the output and as the result. Every solo mode of the host (1 and above)
/// counts as soloed. For a missing track, the result is what the host reports for the null track.
MK_EXPORT bool GetTrackItemSolo(MediaTrack* track, bool* soloOut);
MK_EXPORT bool GetTrackIdSolo(ReaProject* projID, int trackID, bool* soloOut);
MK_EXPORT bool GetSelectedTrackIdSolo(ReaProject* projID, int selectTrackID, bool* soloOut);

/// Sets the solo state. A missing track is passed to the host, which decides the result.
/// @returns false if the host rejects it
MK_EXPORT bool SetTrackItemSolo(MediaTrack* track, bool setSolo);
MK_EXPORT bool SetTrackIdSolo(ReaProject* projID, int trackID, bool setSolo);
MK_EXPORT bool SetSelectedTrackIdSolo(ReaProject* projID, int selectTrackID, bool setSolo);

/// Turns solo off on every track of the project.
/// @returns true
MK_EXPORT bool SetTrackAllSoloOFF(ReaProject* projID);

/// Reads the host's native colour value, and its components from 0 to 255.
/// @returns true
MK_EXPORT bool GetTrackItemColor(MediaTrack* track, int* colorOut, int* rOut, int* gOut, int* bOut);
MK_EXPORT bool GetTrackIdColor(ReaProject* projID, int trackID, int* colorOut, int* rOut, int* gOut,
                               int* bOut);
MK_EXPORT bool GetSelectedTrackIdColor(ReaProject* projID, int selectTrackID, int* colorOut, int* rOut,
                                       int* gOut, int* bOut);

/// Sets a native colour and marks it as in use.
/// @returns true
MK_EXPORT bool SetTrackItemColor(MediaTrack* track, int setColor);
MK_EXPORT bool SetTrackIdColor(ReaProject* projID, int trackID, int setColor);
MK_EXPORT bool SetSelectedTrackIdColor(ReaProject* projID, int selectTrackID, int setColor);

/// Sets the native colour that the host makes from three components, without marking it as in use.
/// @returns true
MK_EXPORT bool SetTrackItemRGB(MediaTrack* track, int setR, int setG, int setB);
MK_EXPORT bool SetTrackIdRGB(ReaProject* projID, int trackID, int setR, int setG, int setB);
MK_EXPORT bool SetSelectedTrackIdRGB(ReaProject* projID, int selectTrackID, int setR, int setG, int setB);

/// Selects or deselects one track.
/// @returns false if there is none
MK_EXPORT bool SetTrackIdSelected(ReaProject* projID, int trackID, bool setSelectType);

/// Selects one track and no other.
/// @returns false if there is none
MK_EXPORT bool SetTrackItemOnlySelected(MediaTrack* track);
MK_EXPORT bool SetTrackIdOnlySelected(ReaProject* projID, int trackID);

} // namespace MK_FELSPAR
