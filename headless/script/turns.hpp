#pragma once
// Functions that a script leaves for later: `reaper.defer` for the next turn, `reaper.atexit` for its end.

#include "headless/script/lua_function.hpp"

#include <span>

namespace headless {

/// defer, runloop (the same under its older name) and atexit.
std::span<const LuaFunction> turn_functions();

/// Runs what was deferred, in order, some thirty times a second as the workstation does, until nothing is
/// deferred any more. Raises the first error.
void run_deferred(lua_State* L);

/// Runs what was left for the end. Raises the first error.
void run_at_exit(lua_State* L);

} // namespace headless
