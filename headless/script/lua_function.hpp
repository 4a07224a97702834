#pragma once
// A function that only Lua scripts find in the table `reaper`, as it is called and as it is told.

#include <lua.hpp>

namespace headless {

struct LuaFunction {
    const char* name;
    lua_CFunction call;
    const char* definition; ///< as for other functions (definition.hpp); "object*" is any value
};

} // namespace headless
