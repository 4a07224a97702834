#pragma once
// The loudness of the loudest 0.4 s of an item's active take (EBU R 128 momentary maximum, LUFS): read it, or
// set it to a value. The SWS extension does the analysis; a message appears if it is missing. Each function
// takes the item, or its zero-based number in a project or among the selected items.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"
#include "host_api/sws_functions.hpp"

namespace mk_api::loudness {

/// The extension's function, looked up again at every call that needs it; null if missing.
extern MK_EXPORT sws::AnalyzeTakeLoudness2* NF_AnalyzeTakeLoudness2;

/// Reads the loudness, and its position in seconds as the analysis reports it.
/// @returns 0, or 1 if there is no item, no take or no SWS, or if the analysis fails
MK_EXPORT int GetMediaItemLoudnessMaxMomentary(MediaItem* item, double* maxMomentaryOut,
                                               double* maxMomentaryPosOut);
MK_EXPORT int GetMediaIdLoudnessMaxMomentary(ReaProject* projID, int itemID, double* maxMomentaryOut,
                                             double* maxMomentaryPosOut);
MK_EXPORT int GetSelectedMediaIdLoudnessMaxMomentary(ReaProject* projID, int selectItemID,
                                                     double* maxMomentaryOut, double* maxMomentaryPosOut);

/// Changes the item's volume by the difference between the requested and the measured loudness, without
/// measuring again.
/// @param maxMomentaryOut  the position of the loudest window in seconds, not its loudness
/// @returns false if the host rejects the new volume; false with the volume unchanged if there is no item, no
/// take or no SWS, if the analysis fails, or if the take is silent
MK_EXPORT bool SetMediaItemLoudnessMaxMomentary(MediaItem* item, double setMaxMomentary,
                                                double* maxMomentaryOut);
MK_EXPORT bool SetMediaIdLoudnessMaxMomentary(ReaProject* projID, int itemID, double setMaxMomentary,
                                              double* maxMomentaryOut);
MK_EXPORT bool SetSelectedMediaIdLoudnessMaxMomentary(ReaProject* projID, int selectItemID,
                                                      double setMaxMomentary, double* maxMomentaryOut);

} // namespace mk_api::loudness
