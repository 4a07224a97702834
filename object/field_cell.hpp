#pragma once
// The cell of one record field: a value and whether it has been given. Copies of a record share their cells.

#include "host/export.hpp"
#include "object/value.hpp"

#include <nlohmann/json_fwd.hpp>

#include <memory>
#include <string>
#include <string_view>

using json = nlohmann::json;

namespace mk_object {

template <class T>
struct mk_LitsItem_inner {
    T value{};
    bool exists = false;

    void set(T new_value) {
        value = std::move(new_value);
        exists = true;
    }
};

/// The cell of a text, which also has a typed JSON form: an object with the one key "string".
template <>
struct MK_EXPORT mk_LitsItem_inner<std::string> {
    std::string value;
    bool exists = false;

    void set(std::string new_value) {
        value = std::move(new_value);
        exists = true;
    }

    /// Sets `key` in the table on top of the stack, if the value exists.
    void push_luavalue(lua_State* L, std::string key) const;

    /// Takes the value from `source[key]`, if that is an object whose first key is "string" with a text.
    void set_value_from_json(json& source, std::string key);

    /// Stores the typed form at `target[key]`, if the value exists; null becomes an object by it.
    void set_json(json& target, std::string key) const;
};

/// A record's handle on one of its cells.
template <class T>
using Cell = std::shared_ptr<mk_LitsItem_inner<T>>;

/// Sets `key` in the table on top of the stack to the cell's value, if it exists.
template <class T>
void push_field(lua_State* L, const char* key, const mk_LitsItem_inner<T>& cell) {
    if (!cell.exists)
        return;
    lua_pushstring(L, key);
    ValueForm<T>::push(L, cell.value);
    lua_settable(L, -3);
}

/// Calls `visit(key)` for the entries of the table at an absolute stack index, the value on top of the stack,
/// up to the first key that is no string.
template <class Visit>
void for_each_entry(lua_State* L, int index, Visit visit) {
    for (lua_pushnil(L); lua_next(L, index); lua_pop(L, 1)) {
        if (lua_type(L, -2) != LUA_TSTRING) {
            lua_pop(L, 2);
            return;
        }
        std::size_t length = 0;
        const char* key = lua_tolstring(L, -2, &length);
        visit(std::string_view(key, length));
    }
}

} // namespace mk_object
