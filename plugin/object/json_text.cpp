#include "object/json_text.hpp"

#include "object/json_levels.hpp"

#include <exception>
#include <utility>

namespace mk_api::string {
int Json_Deserialize(std::string jsonStr, json& objOut) {
    try {
        json value = json::parse(jsonStr);
        if (mk_object::json_levels(value) > mk_object::max_json_levels)
            return 1;
        objOut = std::move(value);
        return 0;
    } catch (const std::exception&) {
        return 1;
    }
}

int Json_Serialize(const json& obj, std::string& jsonStrOut) {
    try {
        if (mk_object::json_levels(obj) > mk_object::max_json_levels)
            return 1;
        jsonStrOut = obj.dump(-1, ' ', false, json::error_handler_t::strict);
        return 0;
    } catch (const std::exception&) {
        return 1;
    }
}

} // namespace mk_api::string
