#pragma once
// The loudest 0.4 s of an item's active take (EBU R 128 momentary maximum, LUFS), read or brought to a value,
// by the SWS extension's analysis. Each takes the item, or its zero-based number in a project or among the
// selected items. Without SWS a message says so.

#include "host/export.hpp"
#include "host/host_types.hpp"

namespace mk_api::loudness {

/// The loudness, and its position as the analysis gives it, in seconds.
/// @returns 0, or 1 for no item, no take, a failed analysis, or no SWS
MK_EXPORT int GetMediaItemLoudnessMaxMomentary(MediaItem* item, double* maxMomentaryOut,
                                               double* maxMomentaryPosOut);
MK_EXPORT int GetMediaIdLoudnessMaxMomentary(ReaProject* projID, int itemID, double* maxMomentaryOut,
                                             double* maxMomentaryPosOut);
MK_EXPORT int GetSelectedMediaIdLoudnessMaxMomentary(ReaProject* projID, int selectItemID,
                                                     double* maxMomentaryOut, double* maxMomentaryPosOut);

/// Changes the item's volume by the difference between the loudness wanted and the one measured, without
/// measuring again.
/// @param maxMomentaryOut  the position of the loudest window in seconds, not its loudness
/// @returns the host's word on the write; false, with the volume as it was, for no item, no take, a failed
/// analysis,
///          silence, or no SWS
MK_EXPORT bool SetMediaItemLoudnessMaxMomentary(MediaItem* item, double setMaxMomentary,
                                                double* maxMomentaryOut);
MK_EXPORT bool SetMediaIdLoudnessMaxMomentary(ReaProject* projID, int itemID, double setMaxMomentary,
                                              double* maxMomentaryOut);
MK_EXPORT bool SetSelectedMediaIdLoudnessMaxMomentary(ReaProject* projID, int selectItemID,
                                                      double setMaxMomentary, double* maxMomentaryOut);

} // namespace mk_api::loudness
