#pragma once
// Inserts files as items at a given position on a given track. The host inserts at the edit cursor on the
// selected track, so the cursor moves and stays after the new item. The selections of tracks and items are
// restored, and the new item is selected as well. The item's take is named after the file, extension
// included.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"

#include <string>
#include <vector>

namespace mk_api::mediaItem {

/// Inserts a file at the edit cursor on the host's selected track.
/// @returns the new item, which the project owns; null if the host rejects the file
MK_EXPORT MediaItem* InsertMediaOutItem(ReaProject* project, const char* filePath);

/// Inserts a file on a track.
/// @param positionType  0: the position counts from the project's start; any other value: from its end
/// @returns the new item, which the project owns; null if the host rejects the file; null with nothing
/// changed if there is no track
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

/// Inserts files one after the other on a track and appends their items to `items`. If the host rejects a
/// file, its item is null and the next file takes its place.
/// @param start     of the first file, in seconds or frames depending on `mode`
/// @param interval  gap after every item; a negative one makes items overlap
/// @param mode      0: seconds, 1: frames
/// @returns 0, or 1 if there is no track, if an exception occurs, or (with files to insert) if the mode is
/// neither
MK_EXPORT int InsertMediaItems(MediaTrack* track, std::vector<std::string> filePaths, double start,
                               double interval, int mode, std::vector<MediaItem*>& items);

} // namespace mk_api::mediaItem
