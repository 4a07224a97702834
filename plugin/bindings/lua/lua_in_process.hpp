#pragma once
// The Lua that loads the module. The archives' library has a Lua of its own inside, which works on the
// caller's states.

#include <lua.hpp>

namespace lua_utility {

/// Whether the Lua inside can work on the states of the one that calls: they are alike from 5.3.4 to the last
/// 5.3. Raises a Lua error if the caller's Lua is shown and is another. One that is not shown is the
/// workstation's: version 7 has Lua 5.4, of which the user is told, and whose states are not touched.
/// @param caller  an address in the code that called the module
bool can_serve(lua_State* L, const void* caller);

} // namespace lua_utility
