#pragma once
// Runs a Lua 5.3 script as the workstation does: with the table `reaper`, the plug-in's module for `require`,
// deferred functions, and errors reported with file, line and traceback.

#include "headless/script/lua_function.hpp"

#include <array>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace headless::workstation {
class PluginLibrary;
class Workstation;
} // namespace headless::workstation

namespace headless::script {

struct ScriptRequest {
    std::filesystem::path file;
    std::vector<std::string> arguments;               ///< the script's `arg` from 1, and its `...`
    std::size_t memory_bytes = std::size_t{1} << 30U; ///< limit for its values
};

struct ScriptOutcome {
    int status = 0;      ///< 0: ended normally, or by os.exit with success; 1: an error, or ended by a signal
    std::string error{}; ///< empty unless there was one; several lines
    std::vector<std::string> asked_for{}; ///< absent functions that the script looked up and did not call
};

/// The functions of the table `reaper` that only Lua scripts have.
std::array<std::span<const LuaFunction>, 3> functions_for_lua();

/// The names of all functions of the table `reaper`.
std::vector<std::string> names_for_lua(workstation::Workstation& workstation);

/// Runs the script to its end, including its deferred functions and its exit functions. `os.exit` ends the
/// script but not the program: the workstation keeps its state for the caller.
/// @param plugin          `require "reaper_MERIDEK_FELSPAR"` finds this plug-in's Lua module
/// @param before_closing  gets the outcome while the script's values still exist: finalizers run last, and
/// one of them may never return
ScriptOutcome run_script(workstation::Workstation& workstation, const workstation::PluginLibrary& plugin,
                         const ScriptRequest& request,
                         const std::function<void(const ScriptOutcome&)>& before_closing = {});

} // namespace headless::script
