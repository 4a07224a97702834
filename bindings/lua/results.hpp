#pragma once
// The results of a Lua function. They are gathered first and pushed last, under protection: Lua's memory
// error leaps over what stands between, so nothing that pushes may own anything.

#include "object/json_lua.hpp"
#include "object/mk_list.hpp"
#include "object/path.hpp"
#include "object/value.hpp"

#include <lua.hpp>

#include <string>
#include <type_traits>
#include <vector>

namespace lua_utility {

/// A list on its way to Lua, with the borrowed records where it has any.
template <class T>
struct List {
    std::vector<T> values;
    std::vector<mk_object::mk_List*> records;

    /// To be called when the list is complete.
    void borrow_records() {
        if constexpr (std::is_base_of_v<mk_object::mk_List, T>)
            records = mk_object::mk_List::to_mkList_array(values);
    }
};

// Each pushes one Lua value and may raise Lua's memory error.

/// Pushes a table with keys from 1; records as their own tables.
template <class T>
void pushvalue(lua_State* L, const List<T>& list) {
    lua_createtable(L, 0, 0);
    lua_Integer key = 0;
    const auto set = [&](auto push_one) {
        lua_pushinteger(L, ++key);
        push_one();
        lua_settable(L, -3);
    };
    if constexpr (std::is_base_of_v<mk_object::mk_List, T>)
        for (const mk_object::mk_List* record : list.records)
            set([&] { record->pushvalue(L); });
    else
        for (const T& value : list.values)
            set([&] { mk_object::ValueForm<T>::push(L, value); });
}

inline void pushvalue(lua_State* L, bool value) { lua_pushboolean(L, value); }
inline void pushvalue(lua_State* L, int value) { lua_pushinteger(L, value); }
inline void pushvalue(lua_State* L, const std::string& value) { lua_pushstring(L, value.c_str()); }
inline void pushvalue(lua_State* L, const mk_object::mk_Path& path) { path.pushvalue(L); }

/// Pushes the results. When Lua is out of memory, `failure` and nil take their place.
/// @returns how many values were pushed
template <class Failure, class... T>
int push_results(lua_State* L, Failure failure, const T&... results) {
    const auto push_all = [&](lua_State* state) { (pushvalue(state, results), ...); };
    const auto protected_push = [](lua_State* state) {
        const auto* push = static_cast<const decltype(push_all)*>(lua_touserdata(state, 1));
        lua_settop(state, 0);
        (*push)(state);
        return static_cast<int>(sizeof...(T));
    };
    lua_settop(L, 0);
    lua_pushcfunction(L, protected_push);
    lua_pushlightuserdata(L, const_cast<void*>(static_cast<const void*>(&push_all)));
    if (lua_pcall(L, 1, static_cast<int>(sizeof...(T)), 0) == LUA_OK)
        return static_cast<int>(sizeof...(T));
    lua_settop(L, 0);
    pushvalue(L, failure);
    if constexpr (sizeof...(T) == 1)
        return 1;
    lua_pushnil(L);
    return 2;
}

} // namespace lua_utility
