#pragma once
// An item's name, end, length and sources. Each property has five forms that differ in how the item is found:
// passed directly, by number in the project, among the selected items, on a track, or on a selected track.
// All return true on success. If the item is missing they return false and leave the output unwritten.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"

#include <string>

namespace mk_api::mediaItem {

/// Counts the items of a set, and those among them whose active take has a source of the given type. Case
/// does not matter, "WAV" stands for the host's "WAVE", and an empty type matches every type.
/// @returns true
MK_EXPORT bool GetMediaTypeCount(ReaProject* project, const char* type, int* allOut, int* typeOut);
MK_EXPORT bool GetSelectedMediaTypeCount(ReaProject* project, const char* type, int* allOut, int* typeOut);
MK_EXPORT bool GetTrackItemMediaTypeCount(MediaTrack* track, const char* type, int* allOut, int* typeOut);
MK_EXPORT bool GetTrackMediaTypeCount(ReaProject* project, int trackIndex, const char* type, int* allOut,
                                      int* typeOut);
MK_EXPORT bool GetSelectedTrackMediaTypeCount(ReaProject* project, int trackIndex, const char* type,
                                              int* allOut, int* typeOut);

/// The item's end in seconds of project time.
MK_EXPORT bool GetMediaItemEndTime(MediaItem* item, double* out);
MK_EXPORT bool GetMediaEndTime(ReaProject* project, int index, double* out);
MK_EXPORT bool GetSelectedMediaEndTime(ReaProject* project, int index, double* out);
MK_EXPORT bool GetTrackMediaEndTime(ReaProject* project, int trackIndex, int itemIndex, double* out);
MK_EXPORT bool GetSelectedTrackMediaEndTime(ReaProject* project, int trackIndex, int itemIndex, double* out);

/// The item's end in whole frames at the project's frame rate.
MK_EXPORT bool GetMediaItemEndTimeFrame(MediaItem* item, int* out);
MK_EXPORT bool GetMediaEndTimeFrame(ReaProject* project, int index, int* out);
MK_EXPORT bool GetSelectedMediaEndTimeFrame(ReaProject* project, int index, int* out);
MK_EXPORT bool GetTrackMediaEndFrame(ReaProject* project, int trackIndex, int itemIndex, int* out);
MK_EXPORT bool GetSelectedTrackMediaEndTimeFrame(ReaProject* project, int trackIndex, int itemIndex,
                                                 int* out);

/// The active take's name up to its first dot (a dot that ends the name is kept), cut to `size` - 1 bytes.
/// Returns false if there is no name.
MK_EXPORT bool GetMediaItemName(MediaItem* item, char* out, int size);
MK_EXPORT bool GetMediaName(ReaProject* project, int index, char* out, int size);
MK_EXPORT bool GetSelectedMediaName(ReaProject* project, int index, char* out, int size);
MK_EXPORT bool GetTrackMediaName(ReaProject* project, int trackIndex, int itemIndex, char* out, int size);
MK_EXPORT bool GetSelectedTrackMediaName(ReaProject* project, int trackIndex, int itemIndex, char* out,
                                         int size);

/// Names the active take, using at most 1,023 bytes of the string. For a missing item or take the host
/// decides the result.
MK_EXPORT bool SetMediaItemName(MediaItem* item, const char* name);
MK_EXPORT bool SetMediaName(ReaProject* project, int index, const char* name);
MK_EXPORT bool SetSelectedMediaName(ReaProject* project, int index, const char* name);
MK_EXPORT bool SetTrackMediaName(ReaProject* project, int trackIndex, int itemIndex, const char* name);
MK_EXPORT bool SetSelectedTrackMediaName(ReaProject* project, int trackIndex, int itemIndex,
                                         const char* name);

/// The item's length in seconds.
MK_EXPORT bool GetMediaItemLength(MediaItem* item, double* out);
MK_EXPORT bool GetMediaLength(ReaProject* project, int index, double* out);
MK_EXPORT bool GetSelectedMediaLength(ReaProject* project, int index, double* out);
MK_EXPORT bool GetTrackMediaLength(ReaProject* project, int trackIndex, int itemIndex, double* out);
MK_EXPORT bool GetSelectedTrackMediaLength(ReaProject* project, int trackIndex, int itemIndex, double* out);

/// Returns the name of a take's source file, by zero-based take index; empty if there is none.
/// @throws std::filesystem::filesystem_error, std::bad_alloc
MK_EXPORT std::string GetSourceName(MediaItem* item, int takeIndex, bool withoutExtension);

/// The same, written to a buffer and cut to `size` - 1 bytes.
/// @returns 0, or 1 if the name could not be read
MK_EXPORT int GetSourceName(MediaItem* item, int takeIndex, bool withoutExtension, char* out, int size);

} // namespace mk_api::mediaItem
