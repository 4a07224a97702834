#pragma once
// Functions that a script leaves for later: `reaper.defer` for the next turn, `reaper.atexit` for its end.

#include <lua.hpp>

namespace headless {

/// Sets defer, runloop (the same under its older name) and atexit in the table on top of the stack.
void add_turns(lua_State* L);

/// Runs what was deferred, in order, some thirty times a second as the workstation does, until nothing is
/// deferred any more. Raises the first error.
void run_deferred(lua_State* L);

/// Runs what was left for the end. Raises the first error.
void run_at_exit(lua_State* L);

} // namespace headless
