#include "object/json_lua.hpp"

#include "object/json_levels.hpp"

#include <lua.hpp>

#include <stdexcept>
#include <utility>

namespace lua_utility {
namespace {

constexpr int slots_per_level = 3; // a key, a value, and the table or the key before

json read_number(lua_State* L) {
    const int whole = static_cast<int>(lua_tointegerx(L, -1, nullptr));
    const double number = lua_tonumberx(L, -1, nullptr);
    return number == whole ? json(whole) : json(number);
}

json read_table(lua_State* L, int index, int levels);

/// Converts the value on top of the stack. Returns a discarded value for a type that JSON does not have.
json read_value(lua_State* L, int levels) {
    switch (lua_type(L, -1)) {
    case LUA_TNUMBER:
        return read_number(L);
    case LUA_TSTRING:
        return lua_tolstring(L, -1, nullptr);
    case LUA_TBOOLEAN:
        return lua_toboolean(L, -1);
    case LUA_TTABLE:
        return read_table(L, lua_gettop(L), levels - 1);
    default:
        return json::value_t::discarded;
    }
}

json read_table(lua_State* L, int index, int levels) {
    if (levels == 0 || !lua_checkstack(L, slots_per_level))
        throw std::length_error("nested too deeply");
    json table;
    for (lua_pushnil(L); lua_next(L, index); lua_pop(L, 1)) {
        const int key_type = lua_type(L, -2);
        if (key_type != LUA_TNUMBER && key_type != LUA_TSTRING)
            continue;
        json value = read_value(L, levels);
        if (value.is_discarded())
            continue;
        if (table.is_null()) // nlohmann's own conversion from null leaves a broken value if memory runs out
            table = key_type == LUA_TNUMBER ? json::array() : json::object();
        if (key_type == LUA_TNUMBER)
            table.push_back(std::move(value));
        else
            table[lua_tolstring(L, -2, nullptr)] = std::move(value);
    }
    return table;
}

void push(lua_State* L, const json& value);

void push_array(lua_State* L, const json& array) {
    lua_createtable(L, 0, 0);
    lua_Integer key = 0;
    for (const json& element : array) {
        lua_pushinteger(L, ++key);
        push(L, element);
        lua_settable(L, -3);
    }
}

void push_object(lua_State* L, const json& object) {
    lua_createtable(L, 0, 0);
    // Not items(): it owns strings that a memory error would leak.
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        lua_pushstring(L, entry.key().c_str());
        push(L, *entry);
        lua_settable(L, -3);
    }
}

void push(lua_State* L, const json& value) {
    switch (value.type()) {
    case json::value_t::object:
        return push_object(L, value);
    case json::value_t::array:
        return push_array(L, value);
    case json::value_t::string:
        lua_pushstring(L, value.get_ref<const std::string&>().c_str());
        return;
    case json::value_t::boolean:
        return lua_pushboolean(L, value.get<bool>());
    case json::value_t::number_integer:
    case json::value_t::number_unsigned:
        return lua_pushinteger(L, value.get<int>());
    case json::value_t::number_float:
        return lua_pushnumber(L, value.get<double>());
    default:
        return lua_pushnil(L);
    }
}

} // namespace

void get_arg_json(lua_State* L, int index, json& out) {
    if (lua_type(L, index) == LUA_TTABLE)
        out = read_table(L, index, mk_object::max_json_levels);
}

void pushvalue(lua_State* L, const json& value) {
    const int levels = mk_object::json_levels(value);
    if (levels > mk_object::max_json_levels || !lua_checkstack(L, slots_per_level * levels + 1))
        lua_pushnil(L);
    else
        push(L, value);
}

} // namespace lua_utility
