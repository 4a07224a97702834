#pragma once
// The debug library of a script, without access to the variables of C functions: C functions trust them, so a
// script that changed one could crash the program. Other interpreters that load the plug-in keep their own
// debug library.

#include <lua.hpp>

namespace headless::script {

/// Makes `debug.setlocal` and `debug.setupvalue` find no variable in a C function. To be called after
/// luaL_openlibs. May raise Lua's memory error.
void guard_debug_library(lua_State* L);

} // namespace headless::script
