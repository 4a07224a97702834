#include "api/media/metadata.hpp"

#include "api/media/on_item.hpp"
#include "api/track/on_track.hpp"
#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"
#include "object/path.hpp"
#include "utility/mk_utility.hpp"
#include "utility/numbers.hpp"

#include <string_view>

namespace mk_api::mediaItem {
namespace {

bool is_type(MediaItem* item, const char* type) {
    MediaItem_Take* take = call(GetActiveTake, item);
    PCM_source* source = take ? call(GetMediaItemTake_Source, take) : nullptr;
    if (!source)
        return false;
    char name[1024] = "";
    call(GetMediaSourceType, source, name, static_cast<int>(sizeof name));
    using mk_utility::Stricmp;
    return Stricmp(type, name) || (Stricmp(name, "WAVE") && Stricmp(type, "WAV"));
}

/// Counts with the host's two functions for a set of items, either a project's or a track's.
template <class Set>
bool count_type(int (*count_items)(Set*), MediaItem* (*get_item)(Set*, int), Set* set, const char* type,
                int* all_out, int* type_out) {
    const char* wanted = text_or_empty(type);
    const int all = call(count_items, set);
    int of_type = all;
    if (*wanted) {
        of_type = 0;
        const int count = call(count_items, set);
        for (int i = 0; i < count; ++i)
            of_type += is_type(call(get_item, set, i), wanted);
    }
    put(all_out, all);
    put(type_out, of_type);
    return true;
}

double seconds(MediaItem* item, const char* key) { return call(GetMediaItemInfo_Value, item, key); }

/// Deletes every dot that is followed by a character on its line, and the rest of that line.
std::string without_extensions(std::string_view name) {
    constexpr std::string_view line_breaks = "\r\n";
    std::string result;
    for (std::size_t i = 0; i < name.size(); ++i) {
        const bool begins_extension =
            name[i] == '.' && i + 1 < name.size() && line_breaks.find(name[i + 1]) == std::string_view::npos;
        if (!begins_extension) {
            result += name[i];
            continue;
        }
        const std::size_t line_end = name.find_first_of(line_breaks, i);
        if (line_end == std::string_view::npos)
            break;
        i = line_end - 1;
    }
    return result;
}

} // namespace

bool GetMediaTypeCount(ReaProject* project, const char* type, int* allOut, int* typeOut) {
    return count_type(CountMediaItems, GetMediaItem, project, type, allOut, typeOut);
}
bool GetSelectedMediaTypeCount(ReaProject* project, const char* type, int* allOut, int* typeOut) {
    return count_type(CountSelectedMediaItems, GetSelectedMediaItem, project, type, allOut, typeOut);
}
bool GetTrackItemMediaTypeCount(MediaTrack* track, const char* type, int* allOut, int* typeOut) {
    return count_type(CountTrackMediaItems, GetTrackMediaItem, track, type, allOut, typeOut);
}
bool GetTrackMediaTypeCount(ReaProject* project, int trackIndex, const char* type, int* allOut,
                            int* typeOut) {
    return track::on_track(Scope::all, Missing::goes_on, GetTrackItemMediaTypeCount, project, trackIndex,
                           type, allOut, typeOut);
}
bool GetSelectedTrackMediaTypeCount(ReaProject* project, int trackIndex, const char* type, int* allOut,
                                    int* typeOut) {
    return track::on_track(Scope::selected, Missing::goes_on, GetTrackItemMediaTypeCount, project, trackIndex,
                           type, allOut, typeOut);
}

bool GetMediaItemEndTime(MediaItem* item, double* out) {
    if (!item)
        return false;
    put(out, seconds(item, "D_POSITION") + seconds(item, "D_LENGTH"));
    return true;
}
bool GetMediaEndTime(ReaProject* project, int index, double* out) {
    return on_item(Scope::all, Missing::fails, GetMediaItemEndTime, project, index, out);
}
bool GetSelectedMediaEndTime(ReaProject* project, int index, double* out) {
    return on_item(Scope::selected, Missing::fails, GetMediaItemEndTime, project, index, out);
}
bool GetTrackMediaEndTime(ReaProject* project, int trackIndex, int itemIndex, double* out) {
    return on_track_item(Scope::all, Missing::fails, GetMediaItemEndTime, project, trackIndex, itemIndex,
                         out);
}
bool GetSelectedTrackMediaEndTime(ReaProject* project, int trackIndex, int itemIndex, double* out) {
    return on_track_item(Scope::selected, Missing::fails, GetMediaItemEndTime, project, trackIndex, itemIndex,
                         out);
}

bool GetMediaItemEndTimeFrame(MediaItem* item, int* out) {
    if (!item)
        return false;
    bool drop_frame = false;
    const double rate = call(TimeMap_curFrameRate, call(GetItemProjectContext, item), &drop_frame);
    const double end_seconds = seconds(item, "D_LENGTH") + seconds(item, "D_POSITION");
    put(out, frame_at(rate, end_seconds));
    return true;
}
bool GetMediaEndTimeFrame(ReaProject* project, int index, int* out) {
    return on_item(Scope::all, Missing::fails, GetMediaItemEndTimeFrame, project, index, out);
}
bool GetSelectedMediaEndTimeFrame(ReaProject* project, int index, int* out) {
    return on_item(Scope::selected, Missing::fails, GetMediaItemEndTimeFrame, project, index, out);
}
bool GetTrackMediaEndFrame(ReaProject* project, int trackIndex, int itemIndex, int* out) {
    return on_track_item(Scope::all, Missing::fails, GetMediaItemEndTimeFrame, project, trackIndex, itemIndex,
                         out);
}
bool GetSelectedTrackMediaEndTimeFrame(ReaProject* project, int trackIndex, int itemIndex, int* out) {
    return on_track_item(Scope::selected, Missing::fails, GetMediaItemEndTimeFrame, project, trackIndex,
                         itemIndex, out);
}

bool GetMediaItemName(MediaItem* item, char* out, int size) {
    MediaItem_Take* take = item ? call(GetActiveTake, item) : nullptr;
    const char* name = take ? call(GetTakeName, take) : nullptr;
    if (!name)
        return false;
    mk_utility::strcpy(out, size, without_extensions(name));
    return true;
}
bool GetMediaName(ReaProject* project, int index, char* out, int size) {
    return on_item(Scope::all, Missing::fails, GetMediaItemName, project, index, out, size);
}
bool GetSelectedMediaName(ReaProject* project, int index, char* out, int size) {
    return on_item(Scope::selected, Missing::fails, GetMediaItemName, project, index, out, size);
}
bool GetTrackMediaName(ReaProject* project, int trackIndex, int itemIndex, char* out, int size) {
    return on_track_item(Scope::all, Missing::fails, GetMediaItemName, project, trackIndex, itemIndex, out,
                         size);
}
bool GetSelectedTrackMediaName(ReaProject* project, int trackIndex, int itemIndex, char* out, int size) {
    return on_track_item(Scope::selected, Missing::fails, GetMediaItemName, project, trackIndex, itemIndex,
                         out, size);
}

bool SetMediaItemName(MediaItem* item, const char* name) {
    MediaItem_Take* take = call(GetActiveTake, item);
    char text[1024] = "";
    mk_utility::strcpy(text, sizeof text, text_or_empty(name));
    return call(GetSetMediaItemTakeInfo_String, take, "P_NAME", text, true);
}
bool SetMediaName(ReaProject* project, int index, const char* name) {
    return on_item(Scope::all, Missing::goes_on, SetMediaItemName, project, index, name);
}
bool SetSelectedMediaName(ReaProject* project, int index, const char* name) {
    return on_item(Scope::selected, Missing::goes_on, SetMediaItemName, project, index, name);
}
bool SetTrackMediaName(ReaProject* project, int trackIndex, int itemIndex, const char* name) {
    return on_track_item(Scope::all, Missing::goes_on, SetMediaItemName, project, trackIndex, itemIndex,
                         name);
}
bool SetSelectedTrackMediaName(ReaProject* project, int trackIndex, int itemIndex, const char* name) {
    return on_track_item(Scope::selected, Missing::goes_on, SetMediaItemName, project, trackIndex, itemIndex,
                         name);
}

bool GetMediaItemLength(MediaItem* item, double* out) {
    if (!item)
        return false;
    put(out, seconds(item, "D_LENGTH"));
    return true;
}
bool GetMediaLength(ReaProject* project, int index, double* out) {
    return on_item(Scope::all, Missing::fails, GetMediaItemLength, project, index, out);
}
bool GetSelectedMediaLength(ReaProject* project, int index, double* out) {
    return on_item(Scope::selected, Missing::fails, GetMediaItemLength, project, index, out);
}
bool GetTrackMediaLength(ReaProject* project, int trackIndex, int itemIndex, double* out) {
    return on_track_item(Scope::all, Missing::fails, GetMediaItemLength, project, trackIndex, itemIndex, out);
}
bool GetSelectedTrackMediaLength(ReaProject* project, int trackIndex, int itemIndex, double* out) {
    return on_track_item(Scope::selected, Missing::fails, GetMediaItemLength, project, trackIndex, itemIndex,
                         out);
}

std::string GetSourceName(MediaItem* item, int takeIndex, bool withoutExtension) {
    MediaItem_Take* take = call(GetTake, item, takeIndex);
    PCM_source* source = take ? call(GetMediaItemTake_Source, take) : nullptr;
    const char* file = source ? source->GetFileName() : nullptr;
    if (!file || !*file)
        return {};
    const mk_object::mk_Path path{std::string(file)};
    return withoutExtension ? path.FileNameWithoutExtension->value : path.FileName->value;
}

int GetSourceName(MediaItem* item, int takeIndex, bool withoutExtension, char* out, int size) {
    try {
        mk_utility::strcpy(out, size, GetSourceName(item, takeIndex, withoutExtension));
        return 0;
    } catch (...) {
        return 1;
    }
}

} // namespace mk_api::mediaItem
