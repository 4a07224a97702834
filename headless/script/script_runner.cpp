#include "headless/script/script_runner.hpp"

#include "common/paths.hpp"
#include "headless/script/bridge.hpp"
#include "headless/script/deferred_calls.hpp"
#include "headless/script/guarded_debug.hpp"
#include "headless/script/memory_limit.hpp"
#include "headless/script/missing_functions.hpp"
#include "headless/script/number_array.hpp"
#include "headless/script/script_stop.hpp"
#include "headless/workstation/plugin_library.hpp"
#include "headless/workstation/workstation.hpp"

#include <lua.hpp>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <ranges>

namespace headless::script {
namespace {

constexpr const char* module_name = "reaper_MERIDEK_FELSPAR";
constexpr const char* module_symbol = "luaopen_reaper_MERIDEK_FELSPAR";

/// The state that the functions of one run share. It outlives the Lua state.
struct Run {
    Bridge bridge;
    MissingFunctions missing;
    std::string file; ///< absolute: scripts derive their folder from it
    const std::vector<std::string>& arguments;
    lua_CFunction open_module; ///< null if the plug-in has none
    lua_State* main_thread;
    std::optional<int> exit_status; ///< by os.exit
    bool is_stopped = false;        ///< by a signal, in the middle of something
};

Run& run_of(lua_State* L) { return *static_cast<Run*>(lua_touserdata(L, lua_upvalueindex(1))); }

[[noreturn]] void raise_exit(lua_State* L) {
    lua_pushliteral(L, "the script has left by os.exit");
    lua_error(L);
    std::abort(); // lua_error does not return
}

/// Code that catches the error of os.exit gets it again at its next instruction.
void keep_raising_exit(lua_State* L) {
    lua_sethook(
        L, [](lua_State* state, lua_Debug*) { raise_exit(state); }, LUA_MASKCOUNT, 1);
}

bool report_to_workstation(const char* text) noexcept {
    try {
        workstation::Workstation::current()->report(Failure{text});
        return true;
    } catch (...) {
        return false;
    }
}

int exit_script(lua_State* L) {
    Run& run = run_of(L);
    constexpr int status_bits = 0xFF;
    const int status = lua_isboolean(L, 1) ? (lua_toboolean(L, 1) ? EXIT_SUCCESS : EXIT_FAILURE)
                                           : static_cast<int>(luaL_optinteger(L, 1, EXIT_SUCCESS));
    run.exit_status = status & status_bits;
    keep_raising_exit(run.main_thread);
    keep_raising_exit(L);
    raise_exit(L);
}

/// The script was not started by an action: no new value, no section, no command.
int get_action_context(lua_State* L) {
    constexpr int none = -1;
    lua_pushboolean(L, 0);
    lua_pushstring(L, run_of(L).file.c_str());
    lua_pushinteger(L, 0);
    lua_pushinteger(L, 0);
    for (int i = 0; i < 3; ++i)
        lua_pushinteger(L, none);
    return 7;
}

/// Shown when the script has ended; a text that begins with an exclamation mark ends it.
int report_error(lua_State* L) {
    const char* text = luaL_checkstring(L, 1);
    if (*text == '!')
        return luaL_error(L, "%s", text + 1);
    if (!report_to_workstation(text))
        return luaL_error(L, "not enough memory");
    return 0;
}

/// In place of the workstation's, which does not know the functions that only Lua scripts have.
int api_exists(lua_State* L) {
    lua_pushboolean(L, run_of(L).missing.exists(L, luaL_checkstring(L, 1)) ? 1 : 0);
    return 1;
}

constexpr LuaFunction context_functions[] = {
    {"ReaScriptError", report_error,
     "void\0const char*\0errmsg\0"
     "Shows a message when the script has ended, with status 1; one that begins with ! ends the script"},
    {"get_action_context", get_action_context,
     "bool\0char*,int*,int*,int*,int*,int*\0fileOut,sectionOut,commandOut,modeOut,resolutionOut,valueOut\0"
     "The script's file, and what action has called it, of which there is none here"},
};

void set_function(lua_State* L, const char* name, lua_CFunction function, Run& run) {
    lua_pushlightuserdata(L, &run);
    lua_pushcclosure(L, function, 1);
    lua_setfield(L, -2, name);
}

void open_reaper(lua_State* L, Run& run) {
    run.bridge.open(L);
    open_number_arrays(L);
    lua_getglobal(L, "reaper");
    for (const auto functions : functions_for_lua())
        for (const LuaFunction& function : functions)
            set_function(L, function.name, function.call, run);
    set_function(L, "APIExists", api_exists, run);
    lua_pop(L, 1);
    run.missing.open(L);
}

void open_environment(lua_State* L, Run& run) {
    luaL_openlibs(L);
    guard_debug_library(L);
    open_reaper(L, run);
    lua_getglobal(L, "os");
    set_function(L, "exit", exit_script, run);
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

int run_main(lua_State* L) {
    Run& run = *static_cast<Run*>(lua_touserdata(L, 1));
    open_environment(L, run);
    if (luaL_loadfilex(L, run.file.c_str(), "t") != LUA_OK)
        return lua_error(L);
    lua_call(L, push_arguments(L, run), 0);
    run_deferred(L);
    return 0;
}

int run_exit_functions(lua_State* L) {
    run_at_exit(L);
    return 0;
}

/// Formats an error of any type as the stand-alone interpreter does. A string is kept whole, even with NULs.
int format_error(lua_State* L) {
    const bool is_text =
        lua_tostring(L, 1) || (luaL_callmeta(L, 1, "__tostring") != 0 && lua_type(L, -1) == LUA_TSTRING);
    if (!is_text)
        lua_pushfstring(L, "(error object is a %s value)", luaL_typename(L, 1));
    lua_pushliteral(L, "\n");
    luaL_traceback(L, L, nullptr, 1);
    lua_concat(L, 3);
    return 1;
}

/// The error on top of the stack. Nothing here may allocate Lua memory: nobody would catch that error.
std::string error_text(lua_State* L) {
    std::size_t bytes = 0;
    const char* message = lua_type(L, -1) == LUA_TSTRING ? lua_tolstring(L, -1, &bytes) : nullptr;
    return message ? std::string(message, bytes) : "unknown error";
}

/// @returns the error's text, empty if there was none
std::string call_protected(lua_State* L, lua_CFunction function, Run& run) {
    lua_settop(L, 0);
    lua_pushcfunction(L, format_error);
    lua_pushcfunction(L, function);
    lua_pushlightuserdata(L, &run);
    if (lua_pcall(L, 1, 0, 1) == LUA_OK)
        return "";
    // If memory ran out, there was none for the place of the error either.
    const std::string text = error_text(L);
    return text.find(':') == std::string::npos ? run.file + ": " + text : text;
}

/// A script that is ended by a signal has no error of its own to report.
std::string run_stoppable(Run& run) {
    const ScriptStop stop(run.main_thread);
    std::string error = call_protected(run.main_thread, run_main, run);
    run.is_stopped = stop.has_raised();
    return run.is_stopped ? "" : error;
}

ScriptOutcome run_in_state(Run& run) {
    std::string error = run_stoppable(run);
    if (run.exit_status)
        return {*run.exit_status, ""};
    const std::string error_at_exit = call_protected(run.main_thread, run_exit_functions, run);
    if (run.exit_status && error.empty())
        return {*run.exit_status, ""};
    error += error.empty() || error_at_exit.empty() ? error_at_exit : '\n' + error_at_exit;
    return {error.empty() && !run.is_stopped ? 0 : 1, error};
}

} // namespace

std::array<std::span<const LuaFunction>, 3> functions_for_lua() {
    return {deferral_functions(), number_array_functions(), context_functions};
}

std::vector<std::string> names_for_lua(workstation::Workstation& workstation) {
    std::vector<std::string> names = Bridge(workstation).names();
    for (const auto functions : functions_for_lua())
        for (const LuaFunction& function : functions)
            names.emplace_back(function.name);
    return names;
}

/// A script that catches the error goes on without what it called, which its user should know.
void report_caught_calls(workstation::Workstation& workstation, const MissingFunctions& missing,
                         const std::string& error) {
    for (const auto& [name, line] : missing.called())
        if (const std::string message = missing.message(name, line); error.find(message) == std::string::npos)
            workstation.report(Failure{"the script called a missing function: " + message});
}

ScriptOutcome run_script(workstation::Workstation& workstation, const workstation::PluginLibrary& plugin,
                         const ScriptRequest& request,
                         const std::function<void(const ScriptOutcome&)>& before_closing) {
    Run run{Bridge(workstation),
            MissingFunctions(names_for_lua(workstation)),
            paths::normal(paths::absolute(request.file)).string(),
            request.arguments,
            reinterpret_cast<lua_CFunction>(plugin.symbol(module_symbol)),
            nullptr,
            std::nullopt,
            false};
    const LimitedState state(request.memory_bytes);
    run.main_thread = state.get();
    ScriptOutcome outcome =
        run.main_thread ? run_in_state(run) : ScriptOutcome{1, run.file + ": not enough memory"};
    report_caught_calls(workstation, run.missing, outcome.error);
    std::ranges::copy_if(run.missing.looked_up(), std::back_inserter(outcome.asked_for),
                         [&](const std::string& name) { return !run.missing.called().contains(name); });
    if (before_closing)
        before_closing(outcome);
    return outcome;
}

} // namespace headless::script
