#include "api/track/lists.hpp"

#include "api/project/strings.hpp"
#include "api/track/on_track.hpp"
#include "api/track/tree.hpp"
#include "api/track/volume_name.hpp"
#include "host_api/host_functions.hpp"
#include "utility/mk_utility.hpp"

namespace {

using mk_object::TrackDetail;

void append_children(ReaProject* project, MediaTrack* parent, std::vector<MediaTrack*>& children) {
    const int count = call(CountTracks, project);
    for (int number = 0; number < count; ++number) {
        MediaTrack* track = call(GetTrack, project, number);
        if (call(GetParentTrack, track) == parent)
            children.push_back(track);
    }
}

TrackDetail detail(MediaTrack* track, int number) {
    char name[1024] = "";
    call(GetTrackName, track, name, static_cast<int>(sizeof name));
    TrackDetail record;
    record.Track->set(track);
    record.Name->set(name);
    record.Index->set(number);
    return record;
}

/// Appends `Track` and `Index` of the tracks whose names pass the test.
template <class Test>
bool append_named(ReaProject* project, std::vector<TrackDetail>& tracks, Test passes) {
    const int count = call(CountTracks, project);
    for (int number = 0; number < count; ++number) {
        char name[1024] = "";
        mk_api::track::GetTrackIdName(project, number, name, static_cast<int>(sizeof name));
        if (!passes(name))
            continue;
        TrackDetail record;
        record.Track->set(call(GetTrack, project, number));
        record.Index->set(number);
        tracks.push_back(record);
    }
    return true;
}

} // namespace

namespace mk_api::track {

bool GetTrackItemChildList(MediaTrack* parent, std::vector<MediaTrack*>& children, int& count) {
    append_children(project_of(parent), parent, children);
    count = static_cast<int>(children.size());
    return true;
}

void GetTrackListDetail(ReaProject* project, std::vector<TrackDetail>& tracks) {
    const int count = call(CountTracks, project);
    for (int number = 0; number < count; ++number)
        tracks.push_back(detail(call(GetTrack, project, number), number));
}

void GetSelectedTrackListDetail(ReaProject* project, std::vector<TrackDetail>& tracks) {
    const int count = call(CountSelectedTracks, project);
    for (int i = 0; i < count; ++i) {
        MediaTrack* track = call(GetSelectedTrack, project, i);
        int number = 0;
        GetTrackItemIndex(track, &number);
        tracks.push_back(detail(track, number));
    }
}

} // namespace mk_api::track

namespace MK_FELSPAR {

using mk_api::track::GetTrackItemSelect;

bool GetTrackItemList(ReaProject* project, std::vector<MediaTrack*>& tracks) {
    tracks.resize(static_cast<std::size_t>(call(CountTracks, project)));
    for (int number = 0; MediaTrack * &track : tracks)
        track = call(GetTrack, project, number++);
    return true;
}

bool GetTrackIdChildList(ReaProject* project, int trackID, std::vector<MediaTrack*>& children, int& count) {
    append_children(project, GetTrackItemSelect(project, trackID, 0), children);
    count = static_cast<int>(children.size());
    return true;
}

bool GetSelectedTrackIdChildList(ReaProject* project, int selectTrackID, std::vector<MediaTrack*>& children) {
    append_children(project, GetTrackItemSelect(project, selectTrackID, 1), children);
    return !children.empty();
}

bool GetTrackDepthList(ReaProject* project, std::vector<TrackDetail>& tracks) {
    const int count = call(CountTracks, project);
    for (int number = 0; number < count; ++number) {
        MediaTrack* track = call(GetTrack, project, number);
        TrackDetail record;
        record.Track->set(track);
        record.Depth->set(call(GetTrackDepth, track));
        tracks.push_back(record);
    }
    return count > 0;
}

bool GetSamePerfectTrackNameList(ReaProject* project, std::string searchName,
                                 std::vector<TrackDetail>& tracks) {
    return append_named(project, tracks, [&](const char* name) { return searchName == name; });
}

bool GetIncludePerfectTrackNameList(ReaProject* project, std::string searchName,
                                    std::vector<TrackDetail>& tracks) {
    char search[1024];
    mk_utility::strcpy(search, sizeof search, std::move(searchName));
    return append_named(project, tracks, [&](const char* name) {
        bool found = false;
        mk_api::string::CheckIncludeString(name, search, &found);
        return found;
    });
}

} // namespace MK_FELSPAR
