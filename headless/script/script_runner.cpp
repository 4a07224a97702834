#include "headless/script/script_runner.hpp"

#include "headless/host/plugin_library.hpp"
#include "headless/host/workstation.hpp"
#include "headless/script/bridge.hpp"
#include "headless/script/memory_limit.hpp"
#include "headless/script/number_array.hpp"
#include "headless/script/turns.hpp"

#include <lua.hpp>

#include <cstdlib>
#include <optional>

namespace headless {
namespace {

constexpr const char* module_name = "reaper_MERIDEK_FELSPAR";
constexpr const char* module_symbol = "luaopen_reaper_MERIDEK_FELSPAR";

/// What the functions of one run share. It outlives the Lua state.
struct Run {
    Bridge bridge;
    std::string file; ///< absolute: scripts look for their folder in their own source's name
    const std::vector<std::string>& arguments;
    lua_CFunction open_module; ///< null when the plug-in has none
    lua_State* main_thread;
    std::optional<int> exit_status; ///< by os.exit
};

Run& run_of(lua_State* L) { return *static_cast<Run*>(lua_touserdata(L, lua_upvalueindex(1))); }

[[noreturn]] void raise_exit(lua_State* L) {
    lua_pushliteral(L, "the script has left by os.exit");
    lua_error(L);
    std::abort(); // lua_error does not return
}

/// Whatever catches the error of os.exit meets it again at its next instruction.
void keep_leaving(lua_State* L) {
    lua_sethook(
        L, [](lua_State* state, lua_Debug*) { raise_exit(state); }, LUA_MASKCOUNT, 1);
}

int leave(lua_State* L) {
    Run& run = run_of(L);
    constexpr int status_bits = 0xFF;
    const int status = lua_isboolean(L, 1) ? (lua_toboolean(L, 1) ? EXIT_SUCCESS : EXIT_FAILURE)
                                           : static_cast<int>(luaL_optinteger(L, 1, EXIT_SUCCESS));
    run.exit_status = status & status_bits;
    keep_leaving(run.main_thread);
    keep_leaving(L);
    raise_exit(L);
}

/// Not by an action but by the command line: no new value, no section, no command.
int get_action_context(lua_State* L) {
    constexpr int none = -1;
    lua_pushboolean(L, 0);
    lua_pushstring(L, run_of(L).file.c_str());
    lua_pushinteger(L, 0);
    lua_pushinteger(L, 0);
    for (int i = 0; i < 3; ++i) {
        lua_pushinteger(L, none);
    }
    return 7;
}

constexpr LuaFunction context_functions[] = {
    {"get_action_context", get_action_context,
     "bool\0char*,int*,int*,int*,int*,int*\0fileOut,sectionOut,commandOut,modeOut,resolutionOut,valueOut\0"
     "The script's file, and what action has called it, of which there is none here"},
};

void set_closure(lua_State* L, const char* name, lua_CFunction function, Run& run) {
    lua_pushlightuserdata(L, &run);
    lua_pushcclosure(L, function, 1);
    lua_setfield(L, -2, name);
}

void open_reaper(lua_State* L, Run& run) {
    run.bridge.open(L);
    open_number_arrays(L);
    lua_getglobal(L, "reaper");
    for (const auto functions : functions_for_lua()) {
        for (const LuaFunction& function : functions) {
            set_closure(L, function.name, function.call, run);
        }
    }
    lua_pop(L, 1);
}

void open_environment(lua_State* L, Run& run) {
    luaL_openlibs(L);
    open_reaper(L, run);
    lua_getglobal(L, "os");
    set_closure(L, "exit", leave, run);
    luaL_getsubtable(L, LUA_REGISTRYINDEX, "_PRELOAD");
    if (run.open_module) {
        lua_pushcfunction(L, run.open_module);
        lua_setfield(L, -2, module_name);
    }
    lua_pop(L, 2);
}

/// Sets the global `arg` and leaves the arguments on the stack.
int push_arguments(lua_State* L, const Run& run) {
    const auto count = static_cast<int>(run.arguments.size());
    luaL_checkstack(L, count + LUA_MINSTACK, "too many arguments");
    lua_createtable(L, count, 1);
    lua_pushstring(L, run.file.c_str());
    lua_rawseti(L, -2, 0);
    for (int i = 0; i < count; ++i) {
        const std::string& argument = run.arguments[static_cast<std::size_t>(i)];
        lua_pushlstring(L, argument.data(), argument.size());
        lua_pushvalue(L, -1);
        lua_rawseti(L, -3 - i, i + 1);
    }
    lua_pushvalue(L, -1 - count);
    lua_setglobal(L, "arg");
    lua_remove(L, -1 - count);
    return count;
}

int run_to_the_end(lua_State* L) {
    Run& run = *static_cast<Run*>(lua_touserdata(L, 1));
    open_environment(L, run);
    if (luaL_loadfilex(L, run.file.c_str(), "t") != LUA_OK) {
        return lua_error(L);
    }
    lua_call(L, push_arguments(L, run), 0);
    run_deferred(L);
    return 0;
}

int run_the_end(lua_State* L) {
    run_at_exit(L);
    return 0;
}

/// As the stand-alone interpreter tells an error, whatever value it is.
int tell(lua_State* L) {
    const char* message = lua_tostring(L, 1);
    if (!message && luaL_callmeta(L, 1, "__tostring") != 0 && lua_type(L, -1) == LUA_TSTRING) {
        message = lua_tostring(L, -1);
    }
    if (!message) {
        message = lua_pushfstring(L, "(error object is a %s value)", luaL_typename(L, 1));
    }
    luaL_traceback(L, L, message, 1);
    return 1;
}

/// @returns the error's text, empty when there was none
std::string call_protected(lua_State* L, lua_CFunction function, Run& run) {
    lua_settop(L, 0);
    lua_pushcfunction(L, tell);
    lua_pushcfunction(L, function);
    lua_pushlightuserdata(L, &run);
    if (lua_pcall(L, 1, 0, 1) == LUA_OK) {
        return "";
    }
    // Without memory there was none for the place of the error either.
    const char* message = lua_tostring(L, -1);
    const std::string text = message ? message : "unknown error";
    return text.find(':') == std::string::npos ? run.file + ": " + text : text;
}

} // namespace

std::array<std::span<const LuaFunction>, 3> functions_for_lua() {
    return {turn_functions(), number_array_functions(), context_functions};
}

ScriptOutcome run_script(Workstation& workstation, const PluginLibrary& plugin,
                         const ScriptRequest& request) {
    Run run{Bridge(workstation),
            std::filesystem::absolute(request.file).lexically_normal().string(),
            request.arguments,
            reinterpret_cast<lua_CFunction>(plugin.symbol(module_symbol)),
            nullptr,
            std::nullopt};
    const LimitedState state(request.memory_bytes);
    run.main_thread = state.get();
    if (!run.main_thread) {
        return {1, run.file + ": not enough memory"};
    }
    std::string error = call_protected(run.main_thread, run_to_the_end, run);
    if (run.exit_status) {
        return {*run.exit_status, ""};
    }
    const std::string error_at_exit = call_protected(run.main_thread, run_the_end, run);
    if (run.exit_status && error.empty()) {
        return {*run.exit_status, ""};
    }
    error += error.empty() || error_at_exit.empty() ? error_at_exit : '\n' + error_at_exit;
    return {error.empty() ? 0 : 1, error};
}

} // namespace headless
