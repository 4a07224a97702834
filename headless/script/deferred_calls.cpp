#include "headless/script/deferred_calls.hpp"

#include "headless/base/interruption.hpp"

#include <chrono>
#include <thread>

namespace headless::script {
namespace {

constexpr const char* deferred_key = "felspar.deferred";
constexpr const char* at_exit_key = "felspar.at_exit";
constexpr auto cycle = std::chrono::milliseconds(33);

int append_to(lua_State* L, const char* key) {
    luaL_checktype(L, 1, LUA_TFUNCTION);
    luaL_getsubtable(L, LUA_REGISTRYINDEX, key);
    lua_pushvalue(L, 1);
    lua_rawseti(L, -2, static_cast<lua_Integer>(lua_rawlen(L, -2)) + 1);
    lua_pushboolean(L, 1);
    return 1;
}

int defer(lua_State* L) { return append_to(L, deferred_key); }
int at_exit(lua_State* L) { return append_to(L, at_exit_key); }

#define DEFERRAL(name, call, help)                                                                           \
    { name, call, "bool\0function*\0callback\0" help }
constexpr LuaFunction functions[] = {
    DEFERRAL("defer", defer, "Calls the function in the next turn, once the script has ended"),
    DEFERRAL("runloop", defer, "Calls the function in the next turn, once the script has ended"),
    DEFERRAL("atexit", at_exit, "Calls the function when all has ended"),
};
#undef DEFERRAL

/// Takes the list and runs it. Functions that it adds go into a new list.
/// @returns whether the list had any functions
bool run_list(lua_State* L, const char* key) {
    luaL_getsubtable(L, LUA_REGISTRYINDEX, key);
    const auto count = static_cast<lua_Integer>(lua_rawlen(L, -1));
    lua_pushnil(L);
    lua_setfield(L, LUA_REGISTRYINDEX, key);
    for (lua_Integer i = 1; i <= count; ++i) {
        lua_rawgeti(L, -1, i);
        lua_call(L, 0, 0);
    }
    lua_pop(L, 1);
    return count > 0;
}

} // namespace

std::span<const LuaFunction> deferral_functions() { return functions; }

void run_deferred(lua_State* L) {
    while (interruption::signal_number() == 0 && run_list(L, deferred_key))
        std::this_thread::sleep_for(cycle);
}

void run_at_exit(lua_State* L) { run_list(L, at_exit_key); }

} // namespace headless::script
