#pragma once
// Converts the results of one call to Lua's stack.

#include "headless/script/arguments.hpp"

namespace headless::script {

/// Pushes the return value, unless it is void, and then every result among the parameters, in their order.
/// May raise Lua's memory error.
/// @param result  what the function returned
/// @returns number of values pushed
int push_results(lua_State* L, const BridgedFunction& function, const Arguments& arguments, void* result);

} // namespace headless::script
