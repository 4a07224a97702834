#include "api/media/metadata.hpp"

#include "api/media/lookup.hpp"
#include "host_api/host_functions.hpp"
#include "host_api/output.hpp"
#include "host_api/text.hpp"
#include "object/path.hpp"
#include "utility/mk_utility.hpp"
#include "utility/numbers.hpp"

#include <string_view>

namespace mk_api::mediaItem {
namespace {

MediaItem* in_project(ReaProject* project, int index) { return GetMediaItemSelect(project, index, 0); }
MediaItem* among_selected(ReaProject* project, int index) { return GetMediaItemSelect(project, index, 1); }
MediaItem* on_track(ReaProject* project, int track, int index) {
    return GetMediaTrackItemSelect(project, track, index, 0);
}
MediaItem* on_selected_track(ReaProject* project, int track, int index) {
    return GetMediaTrackItemSelect(project, track, index, 1);
}

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
    return GetTrackItemMediaTypeCount(call(GetTrack, project, trackIndex), type, allOut, typeOut);
}
bool GetSelectedTrackMediaTypeCount(ReaProject* project, int trackIndex, const char* type, int* allOut,
                                    int* typeOut) {
    return GetTrackItemMediaTypeCount(call(GetSelectedTrack, project, trackIndex), type, allOut, typeOut);
}

bool GetMediaItemEndTime(MediaItem* item, double* out) {
    if (!item)
        return false;
    put(out, seconds(item, "D_POSITION") + seconds(item, "D_LENGTH"));
    return true;
}
bool GetMediaEndTime(ReaProject* project, int index, double* out) {
    return GetMediaItemEndTime(in_project(project, index), out);
}
bool GetSelectedMediaEndTime(ReaProject* project, int index, double* out) {
    return GetMediaItemEndTime(among_selected(project, index), out);
}
bool GetTrackMediaEndTime(ReaProject* project, int trackIndex, int itemIndex, double* out) {
    return GetMediaItemEndTime(on_track(project, trackIndex, itemIndex), out);
}
bool GetSelectedTrackMediaEndTime(ReaProject* project, int trackIndex, int itemIndex, double* out) {
    return GetMediaItemEndTime(on_selected_track(project, trackIndex, itemIndex), out);
}

bool GetMediaItemEndTimeFrame(MediaItem* item, int* out) {
    if (!item)
        return false;
    bool drop_frame = false;
    const double rate = call(TimeMap_curFrameRate, call(GetItemProjectContext, item), &drop_frame);
    const double end_seconds = seconds(item, "D_LENGTH") + seconds(item, "D_POSITION");
    // Results at frame boundaries depend on these two factors, which do not cancel out in doubles.
    put(out, truncate_to_int(rate * (end_seconds * 10000.0) * 0.0001));
    return true;
}
bool GetMediaEndTimeFrame(ReaProject* project, int index, int* out) {
    return GetMediaItemEndTimeFrame(in_project(project, index), out);
}
bool GetSelectedMediaEndTimeFrame(ReaProject* project, int index, int* out) {
    return GetMediaItemEndTimeFrame(among_selected(project, index), out);
}
bool GetTrackMediaEndFrame(ReaProject* project, int trackIndex, int itemIndex, int* out) {
    return GetMediaItemEndTimeFrame(on_track(project, trackIndex, itemIndex), out);
}
bool GetSelectedTrackMediaEndTimeFrame(ReaProject* project, int trackIndex, int itemIndex, int* out) {
    return GetMediaItemEndTimeFrame(on_selected_track(project, trackIndex, itemIndex), out);
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
    return GetMediaItemName(in_project(project, index), out, size);
}
bool GetSelectedMediaName(ReaProject* project, int index, char* out, int size) {
    return GetMediaItemName(among_selected(project, index), out, size);
}
bool GetTrackMediaName(ReaProject* project, int trackIndex, int itemIndex, char* out, int size) {
    return GetMediaItemName(on_track(project, trackIndex, itemIndex), out, size);
}
bool GetSelectedTrackMediaName(ReaProject* project, int trackIndex, int itemIndex, char* out, int size) {
    return GetMediaItemName(on_selected_track(project, trackIndex, itemIndex), out, size);
}

bool SetMediaItemName(MediaItem* item, const char* name) {
    MediaItem_Take* take = call(GetActiveTake, item);
    char text[1024] = "";
    mk_utility::strcpy(text, sizeof text, text_or_empty(name));
    return call(GetSetMediaItemTakeInfo_String, take, "P_NAME", text, true);
}
bool SetMediaName(ReaProject* project, int index, const char* name) {
    return SetMediaItemName(in_project(project, index), name);
}
bool SetSelectedMediaName(ReaProject* project, int index, const char* name) {
    return SetMediaItemName(among_selected(project, index), name);
}
bool SetTrackMediaName(ReaProject* project, int trackIndex, int itemIndex, const char* name) {
    return SetMediaItemName(on_track(project, trackIndex, itemIndex), name);
}
bool SetSelectedTrackMediaName(ReaProject* project, int trackIndex, int itemIndex, const char* name) {
    return SetMediaItemName(on_selected_track(project, trackIndex, itemIndex), name);
}

bool GetMediaItemLength(MediaItem* item, double* out) {
    if (!item)
        return false;
    put(out, seconds(item, "D_LENGTH"));
    return true;
}
bool GetMediaLength(ReaProject* project, int index, double* out) {
    return GetMediaItemLength(in_project(project, index), out);
}
bool GetSelectedMediaLength(ReaProject* project, int index, double* out) {
    return GetMediaItemLength(among_selected(project, index), out);
}
bool GetTrackMediaLength(ReaProject* project, int trackIndex, int itemIndex, double* out) {
    return GetMediaItemLength(on_track(project, trackIndex, itemIndex), out);
}
bool GetSelectedTrackMediaLength(ReaProject* project, int trackIndex, int itemIndex, double* out) {
    return GetMediaItemLength(on_selected_track(project, trackIndex, itemIndex), out);
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
