#pragma once
// Runs a Lua 5.3 script as the workstation does: the table `reaper`, the plug-in's module for `require`,
// deferred functions, and an error told with file, line and traceback.

#include "headless/script/lua_function.hpp"

#include <array>
#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace headless {

class PluginLibrary;
class Workstation;

struct ScriptRequest {
    std::filesystem::path file;
    std::vector<std::string> arguments;               ///< the script's `arg` from 1, and its `...`
    std::size_t memory_bytes = std::size_t{1} << 30U; ///< the most that its values may take
};

struct ScriptOutcome {
    int status = 0;      ///< 0: it came to its end, or left by os.exit with success; 1: an error
    std::string error{}; ///< empty unless there was one; several lines
};

/// What the table `reaper` has besides the functions of every script language.
std::array<std::span<const LuaFunction>, 3> functions_for_lua();

/// Runs the script to its end, its deferred functions and its functions for the end included. `os.exit` ends
/// the script and not the program: what the workstation holds stays for the caller.
/// @param plugin  its Lua module is what `require "reaper_MERIDEK_FELSPAR"` finds
ScriptOutcome run_script(Workstation& workstation, const PluginLibrary& plugin, const ScriptRequest& request);

} // namespace headless
