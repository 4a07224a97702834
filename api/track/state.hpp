#pragma once
// A track's mute, solo, colour and selection. Each property has an `Item` member, which takes the track, and
// `Id` and `SelectedId` members, which take a number among all or among the selected tracks of a project
// (null: the current one). All return false on failure and show nothing; an output that a failure leaves
// unwritten is so noted.

#include "host/export.hpp"
#include "host/host_types.hpp"

namespace MK_FELSPAR {

/// The mute state, as the output and as the result. A failed read is false with `muteOut` unwritten, so an
/// unmuted track and a missing one differ in the output alone.
MK_EXPORT bool GetTrackItemMute(MediaTrack* track, bool* muteOut);
MK_EXPORT bool GetTrackIdMute(ReaProject* projID, int trackId, bool* muteOut);
MK_EXPORT bool GetSelectedTrackIdMute(ReaProject* projID, int selectTrackId, bool* muteOut);

/// @returns the host's word on the write, also for a track that is not there
MK_EXPORT bool SetTrackItemMute(MediaTrack* track, bool setMute);
MK_EXPORT bool SetTrackIdMute(ReaProject* projID, int trackID, bool setMute);
MK_EXPORT bool SetSelectedTrackIdMute(ReaProject* projID, int selectTrackID, bool setMute);

/// Unmutes every track of the project. @returns true
MK_EXPORT bool SetTrackAllMuteOFF(ReaProject* projID);

/// The solo state, as the output and as the result; every solo mode of the host (1 and above) reads as
/// soloed. A missing track reads as the host answers for the null track.
MK_EXPORT bool GetTrackItemSolo(MediaTrack* track, bool* soloOut);
MK_EXPORT bool GetTrackIdSolo(ReaProject* projID, int trackID, bool* soloOut);
MK_EXPORT bool GetSelectedTrackIdSolo(ReaProject* projID, int selectTrackID, bool* soloOut);

/// @returns the host's word on the write, also for a track that is not there
MK_EXPORT bool SetTrackItemSolo(MediaTrack* track, bool setSolo);
MK_EXPORT bool SetTrackIdSolo(ReaProject* projID, int trackID, bool setSolo);
MK_EXPORT bool SetSelectedTrackIdSolo(ReaProject* projID, int selectTrackID, bool setSolo);

/// Takes every track of the project out of solo. @returns true
MK_EXPORT bool SetTrackAllSoloOFF(ReaProject* projID);

/// The host's native colour value, with its parts from 0 to 255. @returns true
MK_EXPORT bool GetTrackItemColor(MediaTrack* track, int* colorOut, int* rOut, int* gOut, int* bOut);
MK_EXPORT bool GetTrackIdColor(ReaProject* projID, int trackID, int* colorOut, int* rOut, int* gOut,
                               int* bOut);
MK_EXPORT bool GetSelectedTrackIdColor(ReaProject* projID, int selectTrackID, int* colorOut, int* rOut,
                                       int* gOut, int* bOut);

/// Sets a native colour and marks it as in use. @returns true
MK_EXPORT bool SetTrackItemColor(MediaTrack* track, int setColor);
MK_EXPORT bool SetTrackIdColor(ReaProject* projID, int trackID, int setColor);
MK_EXPORT bool SetSelectedTrackIdColor(ReaProject* projID, int selectTrackID, int setColor);

/// Sets the native colour of three parts as the host joins them, without the mark of a colour in use.
/// @returns true
MK_EXPORT bool SetTrackItemRGB(MediaTrack* track, int setR, int setG, int setB);
MK_EXPORT bool SetTrackIdRGB(ReaProject* projID, int trackID, int setR, int setG, int setB);
MK_EXPORT bool SetSelectedTrackIdRGB(ReaProject* projID, int selectTrackID, int setR, int setG, int setB);

/// Selects or deselects one track. @returns false when there is none
MK_EXPORT bool SetTrackIdSelected(ReaProject* projID, int trackID, bool setSelectType);

/// Selects one track and no other. @returns false when there is none
MK_EXPORT bool SetTrackItemOnlySelected(MediaTrack* track);
MK_EXPORT bool SetTrackIdOnlySelected(ReaProject* projID, int trackID);

} // namespace MK_FELSPAR
