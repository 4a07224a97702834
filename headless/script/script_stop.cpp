#include "headless/script/script_stop.hpp"

namespace headless::script {
namespace {

constexpr int hook_interval_instructions = 1000;
constexpr int raised_interval_instructions = 1;

void raise_after_grace(lua_State* L, lua_Debug*) {
    if (interruption::age() < ScriptStop::grace)
        return;
    lua_sethook(L, raise_after_grace, LUA_MASKCOUNT, raised_interval_instructions);
    luaL_error(L, interruption::reason);
}

/// Lua allows only this call from a signal handler.
void install_hook(void* state) {
    lua_sethook(static_cast<lua_State*>(state), raise_after_grace, LUA_MASKCOUNT, hook_interval_instructions);
}

} // namespace

ScriptStop::ScriptStop(lua_State* L) : state_(L) {
    reaction_.emplace(install_hook, L);
    if (interruption::signal_number() != 0)
        install_hook(L);
}

bool ScriptStop::has_raised() const {
    return lua_gethook(state_) == raise_after_grace &&
           lua_gethookcount(state_) == raised_interval_instructions;
}

ScriptStop::~ScriptStop() {
    reaction_.reset(); // before the hook is removed, so that it cannot be set again
    if (lua_gethook(state_) == raise_after_grace)
        lua_sethook(state_, nullptr, 0, 0);
}

} // namespace headless::script
