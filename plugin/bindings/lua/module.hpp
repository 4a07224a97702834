#pragma once
// The Lua module `reaper_MERIDEK_FELSPAR`: 18 functions, which read their arguments leniently, call one logic
// function each and raise no Lua error. If Lua or this library runs out of memory, they return their failure
// value and nil.

#include "host_api/export.hpp"

#include <lua.hpp>

/// Publishes the functions in the global table `MK_FELSPAR` and in the host's table `reaper`.
/// @returns 1, with `reaper` on the stack; 0 if the caller's Lua is another and cannot raise the error
extern "C" MK_EXPORT int luaopen_reaper_MERIDEK_FELSPAR(lua_State* L);

namespace MK_FELSPAR {

// The functions have their Lua names with l_ in place of MK_.
#define MK_LIST(scope, name, parameters, arguments, help) MK_EXPORT int l_##name(lua_State* L);
#define MK_DOC_ROW(name, result, types, names, help) MK_EXPORT int l_##name(lua_State* L);
#include "bindings/lua/functions.inc"
#undef MK_LIST
#undef MK_DOC_ROW

/// The functions by their Lua names, terminated by a pair of nulls.
MK_EXPORT extern const luaL_Reg reg[];

} // namespace MK_FELSPAR
