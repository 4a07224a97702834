#include "object/field_cell.hpp"

#include "object/record_operations.hpp"

#include <nlohmann/json.hpp>

namespace mk_object {

void mk_LitsItem_inner<std::string>::push_luavalue(lua_State* L, std::string key) {
    push_field(L, key.c_str(), *this);
}

void mk_LitsItem_inner<std::string>::set_value_from_json(json& source, std::string key) {
    const auto entry = source.find(key);
    if (entry == source.end() || !entry->is_object() || entry->empty())
        return;
    const auto first = entry->begin();
    if (first.key() == "string" && first->is_string())
        set(first->get<std::string>());
}

void mk_LitsItem_inner<std::string>::set_json(json& target, std::string key) {
    if (exists)
        target[key] = json{{"string", value}};
}

} // namespace mk_object
