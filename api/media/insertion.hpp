#pragma once
// Inserting files, as items at a given place on a given track. The host inserts at the edit cursor on the
// selected track; so the cursor moves and stays behind the new item, while both selections are restored, with
// the new item selected in addition. The item's take is named after the file, extension included.

#include "host/export.hpp"
#include "host/host_types.hpp"

#include <string>
#include <vector>

namespace mk_api::mediaItem {

/// Inserts a file at the edit cursor on the host's selected track.
/// @returns the new item, which the project owns; null when the host refuses the file
MK_EXPORT MediaItem* InsertMediaOutItem(ReaProject* project, const char* filePath);

/// Inserts a file on a track.
/// @param positionType  0: the position counts from the project's start; any other: from its end
/// @returns the new item, which the project owns; null when the host refuses the file, and for no track,
/// without a change
MK_EXPORT MediaItem* InsertMediaTrackItemSecond(MediaTrack* track, const char* filePath, int positionType,
                                                double seconds);
MK_EXPORT MediaItem* InsertMediaTrackIdSecond(ReaProject* project, int trackIndex, const char* filePath,
                                              int positionType, double seconds);
MK_EXPORT MediaItem* InsertMediaSelectedTrackIdSecond(ReaProject* project, int selectedTrackIndex,
                                                      const char* filePath, int positionType, double seconds);

/// The same in frames at the project's rate.
MK_EXPORT MediaItem* InsertMediaTrackItemFrame(MediaTrack* track, const char* filePath, int positionType,
                                               int frame);
MK_EXPORT MediaItem* InsertMediaTrackIdFrame(ReaProject* project, int trackIndex, const char* filePath,
                                             int positionType, int frame);
MK_EXPORT MediaItem* InsertMediaSelectedTrackIdFrame(ReaProject* project, int selectedTrackIndex,
                                                     const char* filePath, int positionType, int frame);

/// Lays files end to end on a track and appends their items; a file that the host refuses gives a null item,
/// and the next one takes its place.
/// @param start     of the first file, in seconds or frames by the mode
/// @param interval  behind every item; a negative one overlaps
/// @param mode      0: seconds, 1: frames
/// @returns 0, or 1 for no track, an exception, or (with files to insert) another mode
MK_EXPORT int InsertMediaItems(MediaTrack* track, std::vector<std::string> filePaths, double start,
                               double interval, int mode, std::vector<MediaItem*>& items);

} // namespace mk_api::mediaItem
