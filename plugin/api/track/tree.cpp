#include "api/track/tree.hpp"

#include "api/track/lists.hpp"
#include "api/track/on_track.hpp"
#include "api/track/volume_name.hpp"
#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace mk_api::track {
namespace {

std::optional<int> number_of(ReaProject* project, MediaTrack* track) {
    const int count = call(CountTracks, project);
    for (int number = 0; number < count; ++number)
        if (call(GetTrack, project, number) == track)
            return number;
    return std::nullopt;
}

int number_or_first(MediaTrack* track) { return number_of(project_of(track), track).value_or(0); }

/// A track and its depth before a change.
struct PlacedTrack {
    MediaTrack* track;
    std::int64_t depth;
};

std::vector<PlacedTrack> read_tree(ReaProject* project) {
    std::vector<PlacedTrack> tree;
    const int count = call(CountTracks, project);
    for (int number = 0; number < count; ++number) {
        MediaTrack* track = call(GetTrack, project, number);
        tree.push_back({track, call(GetTrackDepth, track)});
    }
    return tree;
}

/// Makes the track after this one lie `levels` levels deeper.
void write_step(MediaTrack* track, std::int64_t levels) {
    call(SetMediaTrackInfo_Value, track, "I_FOLDERDEPTH", static_cast<double>(levels));
}

} // namespace

MediaTrack* GetSelectedTrackFirstInfo(ReaProject* projID, int* trackIdOut) {
    MediaTrack* track = call(GetSelectedTrack, projID, 0);
    if (const auto number = number_of(projID, track))
        put(trackIdOut, *number);
    return track;
}

bool GetTrackItemIndex(MediaTrack* track, int* trackIdOut) {
    const auto number = number_of(project_of(track), track);
    put(trackIdOut, number.value_or(0));
    return number.has_value();
}

bool GetTrackItemDepth(MediaTrack* track, int* depthOut) {
    put(depthOut, call(GetTrackDepth, track));
    return true;
}
bool GetTrackIdDepth(ReaProject* projID, int trackID, int* depthOut) {
    return on_track(Scope::all, Missing::goes_on, GetTrackItemDepth, projID, trackID, depthOut);
}
bool GetSelectedTrackIdDepth(ReaProject* projID, int selectTrackID, int* depthOut) {
    return on_track(Scope::selected, Missing::goes_on, GetTrackItemDepth, projID, selectTrackID, depthOut);
}

bool SetTrackItemDepth(MediaTrack* track, int setDepth) {
    const std::vector<PlacedTrack> tree = read_tree(project_of(track));
    const auto after_track = std::ranges::find(tree.rbegin(), tree.rend(), track, &PlacedTrack::track).base();
    if (after_track - tree.begin() < 2) // not there, or the first
        return true;
    const auto place = after_track - 1;
    const PlacedTrack& before = place[-1];
    const std::int64_t step = setDepth - before.depth;
    if (step > 1)
        return false;
    write_step(before.track, step);
    // Everything under the track moves with it; the next track after that keeps its depth.
    const auto next = std::find_if(after_track, tree.end(),
                                   [&](const PlacedTrack& other) { return other.depth <= place->depth; });
    if (next == tree.end())
        return true;
    const PlacedTrack& last = next[-1];
    write_step(last.track, next->depth - (last.depth + setDepth - place->depth));
    return true;
}
bool SetTrackIdDepth(ReaProject* projID, int trackID, int setDepth) {
    return on_track(Scope::all, Missing::goes_on, SetTrackItemDepth, projID, trackID, setDepth);
}
bool SetSelectedTrackIdDepth(ReaProject* projID, int selectTrackID, int setDepth) {
    return on_track(Scope::selected, Missing::goes_on, SetTrackItemDepth, projID, selectTrackID, setDepth);
}

MediaTrack* InsertTrackId(ReaProject* projID, int trackID) {
    call(InsertTrackAtIndex, trackID, true);
    const int count = call(CountTracks, projID);
    return call(GetTrack, projID, trackID >= count ? count - 1 : trackID);
}

MediaTrack* InsertChildTrack(MediaTrack* parentTrack, int* trackIdOut) {
    if (!parentTrack)
        return nullptr;
    ReaProject* project = project_of(parentTrack);
    std::vector<MediaTrack*> children;
    int count = 0;
    GetTrackItemChildList(parentTrack, children, count);
    const int tracks = call(CountTracks, project);
    const auto insert = [&](int number, int depth) {
        call(InsertTrackAtIndex, number, true);
        MediaTrack* inserted = call(GetTrack, project, number);
        SetTrackItemDepth(inserted, depth);
        put(trackIdOut, number);
        return inserted;
    };
    if (!children.empty()) {
        const int last_number = number_or_first(children.back());
        return insert(last_number + 1, call(GetTrackDepth, children.back()));
    }

    // The new folder includes the track after it until that track's depth is restored.
    const int after_parent = number_or_first(parentTrack) + 1;
    MediaTrack* next = after_parent < tracks ? call(GetTrack, project, after_parent) : nullptr;
    const int next_depth = next ? call(GetTrackDepth, next) : 0;
    MediaTrack* inserted = insert(after_parent, call(GetTrackDepth, parentTrack) + 1);
    if (next)
        SetTrackItemDepth(next, next_depth);
    return inserted;
}

MediaTrack* InsertTrackSearchUniqueOnly(ReaProject* projID, const char* setTrackName, int* trackIdOut) {
    const std::string_view wanted = text_or_empty(setTrackName);
    const int count = call(CountTracks, projID);
    for (int number = 0; number < count; ++number) {
        MediaTrack* track = call(GetTrack, projID, number);
        char name[1024] = "";
        GetTrackItemName(track, name, static_cast<int>(sizeof name));
        if (wanted == name) {
            put(trackIdOut, number);
            return track;
        }
    }
    call(InsertTrackAtIndex, count, true);
    MediaTrack* inserted = call(GetTrack, projID, count);
    SetTrackItemName(inserted, setTrackName);
    put(trackIdOut, count);
    return inserted;
}

} // namespace mk_api::track

bool MK_FELSPAR::DeleteTrackIdSelect(ReaProject* projID, int trackID, int trackType) {
    MediaTrack* track = mk_api::track::GetTrackItemSelect(projID, trackID, trackType);
    if (!track)
        return false;
    call(DeleteTrack, track);
    return true;
}
