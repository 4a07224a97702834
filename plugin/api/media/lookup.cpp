#include "api/media/lookup.hpp"

#include "api/track/lookup.hpp"
#include "host_api/host_functions.hpp"

namespace mk_api::mediaItem {

MediaItem* GetMediaItemSelect(ReaProject* project, int index, int type) {
    switch (type) {
    case 0:
        return call(GetMediaItem, project, index);
    case 1:
        return call(GetSelectedMediaItem, project, index);
    default:
        return nullptr;
    }
}

MediaItem* GetMediaTrackItemSelect(ReaProject* project, int trackIndex, int itemIndex, int type) {
    return call(GetTrackMediaItem, mk_api::track::GetTrackItemSelect(project, trackIndex, type), itemIndex);
}

int GetSelectedMediaItems(ReaProject* project, std::vector<MediaItem*>& items) {
    const int count = call(CountSelectedMediaItems, project);
    for (int i = 0; i < count; ++i)
        items.push_back(call(GetSelectedMediaItem, project, i));
    return 0;
}

int SelectMediaItems(std::vector<MediaItem*> items, bool selected) {
    for (MediaItem* item : items)
        call(SetMediaItemSelected, item, selected);
    return 0;
}

} // namespace mk_api::mediaItem
