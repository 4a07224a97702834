#include "api/media/insertion.hpp"

#include "api/media/lookup.hpp"
#include "api/media/metadata.hpp"
#include "api/project/cursor.hpp"
#include "api/track/on_track.hpp"
#include "host_api/host_functions.hpp"
#include "object/path.hpp"
#include "utility/numbers.hpp"

#include <exception>

namespace mk_api::mediaItem {
namespace {

std::vector<MediaTrack*> selected_tracks(ReaProject* project) {
    std::vector<MediaTrack*> tracks(static_cast<std::size_t>(call(CountSelectedTracks, project)));
    for (int i = 0; MediaTrack * &track : tracks)
        track = call(GetSelectedTrack, project, i++);
    return tracks;
}

/// Inserts with no item selected, so that the only selected item afterwards is the new one.
MediaItem* insert_at_cursor(ReaProject* project, const char* file) {
    std::vector<MediaItem*> selected;
    GetSelectedMediaItems(project, selected);
    SelectMediaItems(selected, false);
    call(InsertMedia, file, 0);
    MediaItem* item = call(GetSelectedMediaItem, project, 0);
    SelectMediaItems(selected, true);
    return item;
}

void name_after_file(MediaItem* item, const char* file) {
    if (!item)
        return;
    const mk_object::mk_Path path{std::string(file)};
    SetMediaItemName(item, path.FileName->value.c_str());
}

/// @param move_cursor  to the place of insertion, given the project
template <class MoveCursor>
MediaItem* insert_on_track(MediaTrack* track, const char* file, MoveCursor move_cursor) {
    if (!track || !file)
        return nullptr;
    ReaProject* project = track::project_of(track);
    move_cursor(project);
    const std::vector<MediaTrack*> selected = selected_tracks(project);
    call(SetOnlyTrackSelected, track);
    MediaItem* item = insert_at_cursor(project, file);
    call(SetTrackSelected, track, false);
    for (MediaTrack* other : selected)
        call(SetTrackSelected, other, true);
    name_after_file(item, file);
    return item;
}

double end_seconds(MediaItem* item) {
    double end = 0.0;
    GetMediaItemEndTime(item, &end);
    return end;
}

double end_frame(MediaItem* item) {
    bool drop_frame = false;
    const double rate = call(TimeMap_curFrameRate, call(GetItemProjectContext, item), &drop_frame);
    return frame_at(rate, end_seconds(item));
}

} // namespace

MediaItem* InsertMediaOutItem(ReaProject* project, const char* filePath) {
    if (!filePath)
        return nullptr;
    MediaItem* item = insert_at_cursor(project, filePath);
    name_after_file(item, filePath);
    return item;
}

MediaItem* InsertMediaTrackItemSecond(MediaTrack* track, const char* filePath, int positionType,
                                      double seconds) {
    return insert_on_track(track, filePath, [&](ReaProject* project) {
        double reached = 0.0;
        cursol::SetPlayCursorPosition(project, positionType, seconds, &reached);
    });
}
MediaItem* InsertMediaTrackIdSecond(ReaProject* project, int trackIndex, const char* filePath,
                                    int positionType, double seconds) {
    return track::on_track(Scope::all, Missing::fails, InsertMediaTrackItemSecond, project, trackIndex,
                           filePath, positionType, seconds);
}
MediaItem* InsertMediaSelectedTrackIdSecond(ReaProject* project, int selectedTrackIndex, const char* filePath,
                                            int positionType, double seconds) {
    return track::on_track(Scope::selected, Missing::fails, InsertMediaTrackItemSecond, project,
                           selectedTrackIndex, filePath, positionType, seconds);
}

MediaItem* InsertMediaTrackItemFrame(MediaTrack* track, const char* filePath, int positionType, int frame) {
    return insert_on_track(track, filePath, [&](ReaProject* project) {
        int reached = 0;
        cursol::SetPlayCursorPositionFrame(project, positionType, frame, &reached);
    });
}
MediaItem* InsertMediaTrackIdFrame(ReaProject* project, int trackIndex, const char* filePath,
                                   int positionType, int frame) {
    return track::on_track(Scope::all, Missing::fails, InsertMediaTrackItemFrame, project, trackIndex,
                           filePath, positionType, frame);
}
MediaItem* InsertMediaSelectedTrackIdFrame(ReaProject* project, int selectedTrackIndex, const char* filePath,
                                           int positionType, int frame) {
    return track::on_track(Scope::selected, Missing::fails, InsertMediaTrackItemFrame, project,
                           selectedTrackIndex, filePath, positionType, frame);
}

int InsertMediaItems(MediaTrack* track, std::vector<std::string> filePaths, double start, double interval,
                     int mode, std::vector<MediaItem*>& items) {
    if (!track)
        return 1;
    try {
        double position = start;
        for (const std::string& path : filePaths) {
            if (mode != 0 && mode != 1)
                return 1;
            MediaItem* item =
                mode == 0 ? InsertMediaTrackItemSecond(track, path.c_str(), 0, position)
                          : InsertMediaTrackItemFrame(track, path.c_str(), 0, truncate_to_int(position));
            items.push_back(item);
            if (item)
                position = (mode == 0 ? end_seconds(item) : end_frame(item)) + interval;
        }
        return 0;
    } catch (const std::exception&) {
        return 1;
    }
}

} // namespace mk_api::mediaItem
