// The functions for Python: lists by handle, and JSON texts.

#include "api/media/peaks.hpp"
#include "api/project/dialogs.hpp"
#include "api/project/files.hpp"
#include "api/project/strings.hpp"
#include "api/track/lists.hpp"
#include "bindings/python/door.hpp"
#include "bindings/python/json_forms.hpp"
#include "bindings/python/value_pools.hpp"
#include "dialogue/lingomat.hpp"
#include "object/json_text.hpp"
#include "object/records.hpp"
#include "ride/ride.hpp"
#include "utility/mk_utility.hpp"

#include <stdexcept>
#include <type_traits>

using mk_object::mk_Peak;
using mk_object::TrackDetail;

namespace python_api {
namespace {

constexpr int failure = 1;

void put_handle(Handle* out, const void* object) {
    if (out)
        *out = reinterpret_cast<Handle>(object);
}

template <class T>
const void* pool_list(std::vector<T>& list) {
    if constexpr (std::is_base_of_v<mk_object::mk_List, T>)
        return mk_object::mk_List::pool_mkList_array<T>(list);
    else
        return python_utility::set_obj_topool<T>(list);
}

/// Adds to the pool the list that `fill` fills, if it returns true.
template <class T, class Fill>
bool list_if_true(Handle* out, Fill fill) {
    return door([&] {
        std::vector<T> list;
        const bool ok = fill(list);
        if (ok && out)
            put_handle(out, pool_list(list));
        return ok;
    });
}

/// Adds to the pool the list of strings that `fill` fills, whatever it returns, and also if it throws.
template <class Fill>
bool text_list(Handle* out, Fill fill) {
    return door([&] {
        std::vector<std::string> list;
        const bool ok = door([&] { return fill(list); });
        if (out)
            put_handle(out, pool_list(list));
        return ok;
    });
}

/// Writes a value as JSON text, cut to the buffer.
void put_json(char* out, int size, const nlohmann::json& value) {
    std::string text;
    if (mk_api::string::Json_Serialize(value, text) != 0)
        throw std::invalid_argument("no JSON text");
    mk_utility::strcpy(out, size, std::move(text));
}

nlohmann::json parse(const char* text) {
    nlohmann::json value;
    if (mk_api::string::Json_Deserialize(text_or_empty(text), value) != 0)
        throw std::invalid_argument("no JSON text");
    return value;
}

} // namespace

bool py_GetTrackItemList(ReaProject* project, Handle* out) {
    return list_if_true<MediaTrack*>(out,
                                     [&](auto& list) { return MK_FELSPAR::GetTrackItemList(project, list); });
}
bool py_GetTrackItemChildList(MediaTrack* track, Handle* out, int* countOut) {
    return list_if_true<MediaTrack*>(out, [&](auto& list) {
        int count = 0;
        const bool ok = mk_api::track::GetTrackItemChildList(track, list, countOut ? *countOut : count);
        return ok;
    });
}
bool py_GetTrackIdChildList(ReaProject* project, int trackID, Handle* out, int* countOut) {
    return list_if_true<MediaTrack*>(out, [&](auto& list) {
        int count = 0;
        return MK_FELSPAR::GetTrackIdChildList(project, trackID, list, countOut ? *countOut : count);
    });
}
bool py_GetSelectedTrackIdChildList(ReaProject* project, int selectTrackID, Handle* out) {
    return list_if_true<MediaTrack*>(out, [&](auto& list) {
        return MK_FELSPAR::GetSelectedTrackIdChildList(project, selectTrackID, list);
    });
}

bool py_GetTrackDepthList(ReaProject* project, Handle* out) {
    return list_if_true<TrackDetail>(
        out, [&](auto& list) { return MK_FELSPAR::GetTrackDepthList(project, list); });
}
bool py_GetSamePerfectTrackNameList(ReaProject* project, const char* name, Handle* out) {
    return list_if_true<TrackDetail>(out, [&](auto& list) {
        return MK_FELSPAR::GetSamePerfectTrackNameList(project, text_or_empty(name), list);
    });
}
bool py_GetIncludePerfectTrackNameList(ReaProject* project, const char* name, Handle* out) {
    return list_if_true<TrackDetail>(out, [&](auto& list) {
        return MK_FELSPAR::GetIncludePerfectTrackNameList(project, text_or_empty(name), list);
    });
}
bool py_GetMediaItemPeakList(MediaItem* item, Handle* out) {
    return list_if_true<mk_Peak>(out,
                                 [&](auto& list) { return MK_FELSPAR::GetMediaItemPeakList(item, list); });
}
bool py_GetMediaIdPeakList(ReaProject* project, int itemID, Handle* out) {
    return list_if_true<mk_Peak>(
        out, [&](auto& list) { return MK_FELSPAR::GetMediaIdPeakList(project, itemID, list); });
}
bool py_GetSelectedMediaIdPeakList(ReaProject* project, int selectItemID, Handle* out) {
    return list_if_true<mk_Peak>(
        out, [&](auto& list) { return MK_FELSPAR::GetSelectedMediaIdPeakList(project, selectItemID, list); });
}

bool py_GetFilePathList(const char* folder, const char* extension, Handle* out) {
    return text_list(out, [&](auto& list) {
        return mk_api::path::GetFilePathList(text_or_empty(folder), text_or_empty(extension), list);
    });
}
bool py_GetStringSplitList(const char* text, const char* separators, Handle* out) {
    return text_list(out, [&](auto& list) {
        return MK_FELSPAR::GetStringSplitList(text_or_empty(text), text_or_empty(separators), list);
    });
}
bool py_GetUserInputList(const char* title, int fieldCount, const char* captions, const char* defaults,
                         Handle* out) {
    return text_list(out, [&](auto& list) {
        return MK_FELSPAR::GetUserInputList(text_or_empty(title), fieldCount, text_or_empty(captions),
                                            text_or_empty(defaults), list);
    });
}

int py_GetPathInfo(const char* filePath, char* out, int outSize) {
    return door(
        [&] {
            mk_object::mk_Path path;
            const int code = mk_api::path::GetPathInfo(text_or_empty(filePath), path);
            put_json(out, outSize, path.to_json());
            return code;
        },
        failure);
}

int py_SetMediaItemListRIDESCRIBER(const char* itemList, int ratioType) {
    return door(
        [&] {
            nlohmann::json items = parse(itemList);
            return mk_api::RIDESCRIBER::SetMediaItemListRIDESCRIBER(
                json_utility::get_array<MediaItem*>(items), ratioType);
        },
        failure);
}

int py_LINGOMAT_InsertMediaItems(const char* subjectLangPath, const char* baseLangPath, double startPos,
                                 double mediaInterval, int startEndType, bool isVolMatch, bool isRIDESCRIBER,
                                 int RIDESCRIBER_ratioType, const char* trackNameList,
                                 char* unmatchedPathListOut, int outSize) {
    return door(
        [&] {
            nlohmann::json names = parse(trackNameList);
            std::vector<std::string> unmatched;
            const int code = mk_api::LINGOMAT::LINGOMAT_InsertMediaItems(
                text_or_empty(subjectLangPath), text_or_empty(baseLangPath), startPos, mediaInterval,
                startEndType, isVolMatch, isRIDESCRIBER, RIDESCRIBER_ratioType,
                json_utility::get_array<std::string>(names), unmatched);
            put_json(unmatchedPathListOut, outSize, python_utility::array_to_typeJson(std::move(unmatched)));
            return code;
        },
        failure);
}

} // namespace python_api
