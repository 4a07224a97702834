#include "object/json_text.hpp"

#include <algorithm>
#include <exception>
#include <utility>

namespace mk_api::string {
namespace {

constexpr int most_levels = 1000;

bool nests_deeper(const json& value, int levels) {
    return value.is_structured() && (levels == 0 || std::ranges::any_of(value, [&](const json& inner) {
                                         return nests_deeper(inner, levels - 1);
                                     }));
}

} // namespace

int Json_Deserialize(std::string jsonStr, json& objOut) {
    try {
        json value = json::parse(jsonStr);
        if (nests_deeper(value, most_levels))
            return 1;
        objOut = std::move(value);
        return 0;
    } catch (const std::exception&) {
        return 1;
    }
}

int Json_Serialize(const json& obj, std::string& jsonStrOut) {
    try {
        if (nests_deeper(obj, most_levels))
            return 1;
        jsonStrOut = obj.dump(-1, ' ', false, json::error_handler_t::strict);
        return 0;
    } catch (const std::exception&) {
        return 1;
    }
}

} // namespace mk_api::string
