#pragma once
// The arguments of a Lua function, read leniently: an argument that is missing or has another type reads as
// the zero of its type. Nothing here raises a Lua error.

#include "host_api/host_types.hpp"

#include <lua.hpp>

#include <string>
#include <type_traits>
#include <vector>

namespace lua_utility {

/// Returns the argument at a stack index as a pointer, a bool, an int, a double or a string (up to its first
/// NUL byte). Numbers are not converted to booleans or strings.
template <class T>
T get_arg(lua_State* L, int index) {
    if constexpr (std::is_pointer_v<T>)
        return lua_isuserdata(L, index) ? static_cast<T>(const_cast<void*>(lua_topointer(L, index)))
                                        : nullptr;
    else if constexpr (std::is_same_v<T, bool>)
        return lua_type(L, index) == LUA_TBOOLEAN && lua_toboolean(L, index);
    else if constexpr (std::is_same_v<T, std::string>)
        return lua_type(L, index) == LUA_TSTRING ? lua_tolstring(L, index, nullptr) : "";
    else if (lua_type(L, index) != LUA_TNUMBER)
        return T{};
    else if constexpr (std::is_same_v<T, int>)
        return static_cast<int>(lua_tointegerx(L, index, nullptr));
    else
        return lua_tonumberx(L, index, nullptr);
}

/// Returns the values of the table at an absolute stack index, in the order of traversal, up to the first key
/// that is not a number. A value of another type counts as null or as the empty string.
template <class T>
std::vector<T> get_arg_array(lua_State* L, int index) {
    std::vector<T> values;
    if (lua_type(L, index) != LUA_TTABLE)
        return values;
    for (lua_pushnil(L); lua_next(L, index); lua_pop(L, 1)) {
        if (lua_type(L, -2) != LUA_TNUMBER) {
            lua_pop(L, 2);
            break;
        }
        values.push_back(get_arg<T>(L, -1));
    }
    return values;
}

} // namespace lua_utility
