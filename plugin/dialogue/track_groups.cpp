#include "dialogue/track_groups.hpp"

#include "api/track/lists.hpp"
#include "api/track/tree.hpp"
#include "api/track/volume_name.hpp"

#include <algorithm>
#include <string_view>

namespace mk_api::LINGOMAT {
namespace {

MediaTrack* find_or_insert_child(MediaTrack* master, const std::vector<MediaTrack*>& children,
                                 const char* name) {
    const auto child = std::ranges::find_if(children, [name](MediaTrack* track) {
        char track_name[1024] = "";
        track::GetTrackItemName(track, track_name, static_cast<int>(sizeof track_name));
        return track_name == std::string_view(name);
    });
    if (child != children.end())
        return *child;
    int number = 0;
    MediaTrack* inserted = track::InsertChildTrack(master, &number);
    track::SetTrackItemName(inserted, name);
    return inserted;
}

std::shared_ptr<mk_object::LINGOMAT_Tracks> make_group(const std::string& master_name) {
    auto group = std::make_shared<mk_object::LINGOMAT_Tracks>();
    int number = 0;
    MediaTrack* master = track::InsertTrackSearchUniqueOnly(nullptr, master_name.c_str(), &number);
    track::SetTrackItemDepth(master, 0);
    group->MasterTrack->set(master);
    group->MasterName->set(master_name);
    std::vector<MediaTrack*> children;
    int count = 0;
    track::GetTrackItemChildList(master, children, count);
    group->BaseTrack->set(find_or_insert_child(master, children, "base"));
    group->UniqueTrack->set(find_or_insert_child(master, children, "unique"));
    return group;
}

} // namespace

mk_object::LINGOMAT_Tracks& TrackGroups::find_or_make(const std::string& master_name) {
    const auto known = by_name_.find(master_name);
    if (known != by_name_.end())
        return *known->second;
    groups_.push_back(make_group(master_name));
    by_name_.emplace(master_name, groups_.back().get());
    return *groups_.back();
}

} // namespace mk_api::LINGOMAT
