// The functions for Python: lists by handle, and JSON texts.

#include "api/project/files.hpp"
#include "bindings/python/guarded_call.hpp"
#include "bindings/python/json_forms.hpp"
#include "bindings/python/list_call.hpp"
#include "dialogue/lingomat.hpp"
#include "host_api/arguments.hpp"
#include "host_api/failure.hpp"
#include "object/json_text.hpp"
#include "ride/ride.hpp"
#include "utility/mk_utility.hpp"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace python_api {

#define MK_LIST(scope, name, parameters, arguments, help)                                                    \
    bool py_##name parameters { return list_call<&scope::name> arguments; }
#include "bindings/reference/list_functions.inc"
#undef MK_LIST

namespace {

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

int py_GetPathInfo(const char* filePath, char* out, int outSize) {
    return guarded(
        [&] {
            mk_object::mk_Path path;
            const int code = mk_api::path::GetPathInfo(text_or_empty(filePath), path);
            put_json(out, outSize, path.to_json());
            return code;
        },
        failure<int>);
}

int py_SetMediaItemListRIDESCRIBER(const char* itemList, int ratioType) {
    return guarded(
        [&] {
            nlohmann::json items = parse(itemList);
            return mk_api::RIDESCRIBER::SetMediaItemListRIDESCRIBER(
                json_utility::get_array<MediaItem*>(items), ratioType);
        },
        failure<int>);
}

int py_LINGOMAT_InsertMediaItems(const char* subjectLangPath, const char* baseLangPath, double startPos,
                                 double mediaInterval, int startEndType, bool isVolMatch, bool isRIDESCRIBER,
                                 int RIDESCRIBER_ratioType, const char* trackNameList,
                                 char* unmatchedPathListOut, int outSize) {
    return guarded(
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
        failure<int>);
}

} // namespace python_api
