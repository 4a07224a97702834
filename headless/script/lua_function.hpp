#pragma once
// A function that exists only for Lua scripts in the table `reaper`: its implementation and its definition.

#include <lua.hpp>

namespace headless::script {

struct LuaFunction {
    const char* name;
    lua_CFunction call;
    const char* definition; ///< as for other functions (definition.hpp); "object*" is any value
};

} // namespace headless::script
