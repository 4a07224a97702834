#include "headless/jobs/dialogue_import.hpp"

#include <lua.hpp>

#include <memory>

namespace headless::jobs {
namespace {

constexpr const char* module_symbol = "luaopen_reaper_MERIDEK_FELSPAR";
constexpr const char* operation_name = "MK_LINGOMAT_InsertMediaItems";

struct Call {
    lua_CFunction open_module;
    const DialogueImport& import;
};

/// Lua reports errors by leaving the function, past destructors: nothing here may own anything.
void push_text(lua_State* L, const std::string& text) { lua_pushlstring(L, text.data(), text.size()); }

void push_texts(lua_State* L, const std::vector<std::string>& texts) {
    lua_createtable(L, static_cast<int>(texts.size()), 0);
    lua_Integer key = 0;
    for (const std::string& text : texts) {
        push_text(L, text);
        lua_rawseti(L, -2, ++key);
    }
}

/// Expects the Call as light user data. Returns the operation's code.
int call_operation(lua_State* L) {
    const Call& call = *static_cast<const Call*>(lua_touserdata(L, 1));
    lua_createtable(L, 0, 0);
    lua_setglobal(L, "reaper"); // to which the module adds its functions
    lua_pushcfunction(L, call.open_module);
    lua_call(L, 0, 1);
    lua_getfield(L, -1, operation_name);
    const DialogueImport& import = call.import;
    push_text(L, import.subject.string());
    push_text(L, import.base.string());
    lua_pushnumber(L, import.start_seconds);
    lua_pushnumber(L, import.interval_seconds);
    lua_pushinteger(L, import.counts_from_end ? 1 : 0);
    lua_pushboolean(L, import.match);
    lua_pushboolean(L, import.ride);
    lua_pushinteger(L, import.ratio);
    push_texts(L, import.groups);
    lua_call(L, 9, 1);
    return 1;
}

lua_CFunction module_of(const workstation::PluginLibrary& plugin) {
    return reinterpret_cast<lua_CFunction>(plugin.symbol(module_symbol));
}

} // namespace

bool offers_dialogue_import(const workstation::PluginLibrary& plugin) { return module_of(plugin) != nullptr; }

bool run_dialogue_import(const workstation::PluginLibrary& plugin, const DialogueImport& import) {
    const std::unique_ptr<lua_State, decltype(&lua_close)> state(luaL_newstate(), lua_close);
    if (!state)
        return false;
    lua_State* L = state.get();
    Call call{module_of(plugin), import};
    lua_pushcfunction(L, call_operation);
    lua_pushlightuserdata(L, &call);
    return lua_pcall(L, 1, 1, 0) == LUA_OK && lua_isinteger(L, -1) && lua_tointeger(L, -1) == 0;
}

} // namespace headless::jobs
