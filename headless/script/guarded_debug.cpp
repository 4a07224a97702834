#include "headless/script/guarded_debug.hpp"

namespace headless::script {
namespace {

/// The original function of the debug library that this one replaces.
int call_original(lua_State* L) {
    lua_pushvalue(L, lua_upvalueindex(1));
    lua_insert(L, 1);
    lua_call(L, lua_gettop(L) - 1, LUA_MULTRET);
    return lua_gettop(L);
}

int set_upvalue(lua_State* L) { return lua_iscfunction(L, 1) != 0 ? 0 : call_original(L); }

int set_local(lua_State* L) {
    const int level_index = lua_isthread(L, 1) ? 2 : 1;
    lua_State* thread = lua_isthread(L, 1) ? lua_tothread(L, 1) : L;
    const auto level = static_cast<int>(luaL_checkinteger(L, level_index));
    lua_Debug frame;
    if (lua_getstack(thread, level, &frame) == 0)
        return luaL_argerror(L, level_index, "level out of range");
    lua_getinfo(thread, "S", &frame);
    if (*frame.what == 'C')
        return 0;
    if (thread == L) { // this function adds a level
        lua_pushinteger(L, level + 1);
        lua_replace(L, level_index);
    }
    return call_original(L);
}

void wrap(lua_State* L, const char* name, lua_CFunction function) {
    lua_getfield(L, -1, name);
    lua_pushcclosure(L, function, 1);
    lua_setfield(L, -2, name);
}

} // namespace

void guard_debug_library(lua_State* L) {
    lua_getglobal(L, "debug");
    wrap(L, "setlocal", set_local);
    wrap(L, "setupvalue", set_upvalue);
    lua_pop(L, 1);
}

} // namespace headless::script
