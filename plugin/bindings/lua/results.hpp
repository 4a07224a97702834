#pragma once
// The results of a Lua function. They are collected first and pushed last, in a protected call: Lua's memory
// error skips destructors, so nothing that pushes may own anything.

#include "object/json_lua.hpp"
#include "object/mk_list.hpp"
#include "object/path.hpp"
#include "object/value_form.hpp"

#include <lua.hpp>

#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace lua_utility {

/// A list to be pushed to Lua, with pointers to its records if it has any.
template <class T>
struct ListResult {
    std::vector<T> values;
    std::vector<mk_object::mk_List*> records;

    /// Call this when the list is complete.
    void borrow_records() {
        if constexpr (std::is_base_of_v<mk_object::mk_List, T>)
            records = mk_object::mk_List::to_mkList_array(values);
    }
};

// Each overload pushes one Lua value and may raise Lua's memory error.

/// Pushes a table with keys from 1. Records become tables of their own.
template <class T>
void pushvalue(lua_State* L, const ListResult<T>& list) {
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

/// Pushes the results. If Lua is out of memory, pushes `first_if_failed` and nil instead, or `first_if_failed`
/// alone if there is only one result.
/// @returns the number of values pushed
template <class First, class... T>
int push_results(lua_State* L, First first_if_failed, const T&... results) {
    const auto push_all = [&](lua_State* state) { (pushvalue(state, results), ...); };
    // Not passed as an argument, because a script's hook could change it before it is read. Hooks and
    // finalizers may call this function again.
    static thread_local const decltype(push_all)* pending = nullptr;
    const auto* outer = std::exchange(pending, &push_all);
    const auto protected_push = [](lua_State* state) {
        (*pending)(state);
        return static_cast<int>(sizeof...(T));
    };
    lua_settop(L, 0);
    lua_pushcfunction(L, protected_push);
    const int status = lua_pcall(L, 0, static_cast<int>(sizeof...(T)), 0);
    pending = outer;
    if (status == LUA_OK)
        return static_cast<int>(sizeof...(T));
    lua_settop(L, 0);
    pushvalue(L, first_if_failed);
    if constexpr (sizeof...(T) == 1)
        return 1;
    lua_pushnil(L);
    return 2;
}

} // namespace lua_utility
