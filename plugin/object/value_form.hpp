#pragma once
// What depends on the type of a record's field: its name, its place in `mk_Value` and its form in Lua.

#include "host_api/host_types.hpp"
#include "object/value.hpp"

#include <lua.hpp>

namespace mk_object {

/// The properties of a field's type. `Held` is its alternative in `mk_Value`. `push` pushes one Lua value.
/// `read` returns the value at `index`, or the zero of the type if that value has another Lua type.
template <class T>
struct ValueForm;

template <>
struct ValueForm<int> {
    static constexpr const char* name = "int";
    using Held = int;
    static void push(lua_State* L, int value) { lua_pushinteger(L, value); }
    static int read(lua_State* L, int index) {
        return lua_type(L, index) == LUA_TNUMBER ? static_cast<int>(lua_tointeger(L, index)) : 0;
    }
};

template <>
struct ValueForm<double> {
    static constexpr const char* name = "double";
    using Held = double;
    static void push(lua_State* L, double value) { lua_pushnumber(L, value); }
    static double read(lua_State* L, int index) {
        return lua_type(L, index) == LUA_TNUMBER ? lua_tonumber(L, index) : 0.0;
    }
};

template <>
struct ValueForm<std::string> {
    static constexpr const char* name = "string";
    using Held = std::string;
    static void push(lua_State* L, const std::string& value) { lua_pushstring(L, value.c_str()); }
    static std::string read(lua_State* L, int index) {
        return lua_type(L, index) == LUA_TSTRING ? lua_tostring(L, index) : "";
    }
};

template <>
struct ValueForm<MediaTrack*> {
    static constexpr const char* name = "MediaTrack*";
    using Held = void*;
    static void push(lua_State* L, MediaTrack* value) {
        if (value)
            lua_pushlightuserdata(L, value);
        else
            lua_pushnil(L);
    }
    static MediaTrack* read(lua_State* L, int index) {
        return lua_isuserdata(L, index) ? static_cast<MediaTrack*>(const_cast<void*>(lua_topointer(L, index)))
                                        : nullptr;
    }
};

} // namespace mk_object
