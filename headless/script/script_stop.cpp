#include "headless/script/script_stop.hpp"

namespace headless::script {
namespace {

constexpr int instructions_between_looks = 1000;
constexpr int instructions_once_struck = 1;

void raise_when_late(lua_State* L, lua_Debug*) {
    if (interruption::age() < ScriptStop::grace)
        return;
    lua_sethook(L, raise_when_late, LUA_MASKCOUNT, instructions_once_struck);
    luaL_error(L, interruption::reason);
}

/// Lua allows only this call from a signal handler.
void begin_to_look(void* state) {
    lua_sethook(static_cast<lua_State*>(state), raise_when_late, LUA_MASKCOUNT, instructions_between_looks);
}

} // namespace

ScriptStop::ScriptStop(lua_State* L) : state_(L) {
    reaction_.emplace(begin_to_look, L);
    if (interruption::signal_number() != 0)
        begin_to_look(L);
}

bool ScriptStop::has_struck() const {
    return lua_gethook(state_) == raise_when_late && lua_gethookcount(state_) == instructions_once_struck;
}

ScriptStop::~ScriptStop() {
    reaction_.reset(); // before the hook is removed, so that it cannot be set again
    if (lua_gethook(state_) == raise_when_late)
        lua_sethook(state_, nullptr, 0, 0);
}

} // namespace headless::script
