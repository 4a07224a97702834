#pragma once
// Deferred calls: functions that a script registers with `reaper.defer` for the next cycle, or with
// `reaper.atexit` for its end.

#include "headless/script/lua_function.hpp"

#include <span>

namespace headless::script {

/// defer, runloop (the same under its older name) and atexit.
std::span<const LuaFunction> deferral_functions();

/// Runs the deferred functions, in order, about thirty times per second as the workstation does, until no
/// function is deferred or a signal asks for the end. Raises the first error.
void run_deferred(lua_State* L);

/// Runs the functions that were registered for the end. Raises the first error.
void run_at_exit(lua_State* L);

} // namespace headless::script
