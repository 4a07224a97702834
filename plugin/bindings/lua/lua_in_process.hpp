#pragma once
// The Lua of the process that loads the module, if it shows one. The archives' library has a Lua of its own inside, which
// works on the caller's states.

#include <lua.hpp>

namespace lua_utility {

/// Raises a Lua error if the process shows a Lua whose states the one inside cannot work on: they are alike from 5.3.4 to
/// the last 5.3. Returns if they are, and if the process shows no Lua, as the workstation.
void refuse_other_lua(lua_State* L);

} // namespace lua_utility
