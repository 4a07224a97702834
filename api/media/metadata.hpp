#pragma once
// What an item is called, where it ends, how long it is and what its sources are. Each property has five
// forms that differ in how the item is found: given, by number in the project, among the selected items, on a
// track, on a selected track. All are true for success; a missing item is false with the output unwritten.

#include "host/export.hpp"
#include "host/host_types.hpp"

#include <string>

namespace mk_api::mediaItem {

/// Counts the items of a set, and those whose active take's source is of the type: case does not matter,
/// "WAV" is the host's "WAVE", and the empty type is every type. @returns true
MK_EXPORT bool GetMediaTypeCount(ReaProject* project, const char* type, int* allOut, int* typeOut);
MK_EXPORT bool GetSelectedMediaTypeCount(ReaProject* project, const char* type, int* allOut, int* typeOut);
MK_EXPORT bool GetTrackItemMediaTypeCount(MediaTrack* track, const char* type, int* allOut, int* typeOut);
MK_EXPORT bool GetTrackMediaTypeCount(ReaProject* project, int trackIndex, const char* type, int* allOut,
                                      int* typeOut);
MK_EXPORT bool GetSelectedTrackMediaTypeCount(ReaProject* project, int trackIndex, const char* type,
                                              int* allOut, int* typeOut);

/// Where the item ends, in seconds of project time.
MK_EXPORT bool GetMediaItemEndTime(MediaItem* item, double* out);
MK_EXPORT bool GetMediaEndTime(ReaProject* project, int index, double* out);
MK_EXPORT bool GetSelectedMediaEndTime(ReaProject* project, int index, double* out);
MK_EXPORT bool GetTrackMediaEndTime(ReaProject* project, int trackIndex, int itemIndex, double* out);
MK_EXPORT bool GetSelectedTrackMediaEndTime(ReaProject* project, int trackIndex, int itemIndex, double* out);

/// Where the item ends, in whole frames at the project's frame rate.
MK_EXPORT bool GetMediaItemEndTimeFrame(MediaItem* item, int* out);
MK_EXPORT bool GetMediaEndTimeFrame(ReaProject* project, int index, int* out);
MK_EXPORT bool GetSelectedMediaEndTimeFrame(ReaProject* project, int index, int* out);
MK_EXPORT bool GetTrackMediaEndFrame(ReaProject* project, int trackIndex, int itemIndex, int* out);
MK_EXPORT bool GetSelectedTrackMediaEndTimeFrame(ReaProject* project, int trackIndex, int itemIndex,
                                                 int* out);

/// The active take's name without anything from its first dot on (a dot that ends the name stays), cut to
/// `size` - 1 bytes. False when there is no name.
MK_EXPORT bool GetMediaItemName(MediaItem* item, char* out, int size);
MK_EXPORT bool GetMediaName(ReaProject* project, int index, char* out, int size);
MK_EXPORT bool GetSelectedMediaName(ReaProject* project, int index, char* out, int size);
MK_EXPORT bool GetTrackMediaName(ReaProject* project, int trackIndex, int itemIndex, char* out, int size);
MK_EXPORT bool GetSelectedTrackMediaName(ReaProject* project, int trackIndex, int itemIndex, char* out,
                                         int size);

/// Names the active take, with at most 1,023 bytes of the text. The host answers for a missing item or take.
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

/// Name of the file behind a take, by zero-based take index; empty when there is none.
/// @throws std::filesystem::filesystem_error, std::bad_alloc
MK_EXPORT std::string GetSourceName(MediaItem* item, int takeIndex, bool withoutExtension);

/// The same into a buffer, cut to `size` - 1 bytes. @returns 0, or 1 when the name could not be read
MK_EXPORT int GetSourceName(MediaItem* item, int takeIndex, bool withoutExtension, char* out, int size);

} // namespace mk_api::mediaItem
