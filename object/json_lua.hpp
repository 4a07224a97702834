#pragma once
// JSON values from Lua tables and back.

#include <nlohmann/json.hpp>

struct lua_State;

namespace lua_utility {

using json = nlohmann::json;

/// Reads the table at the absolute stack index into `out`, which comes in as null and stays so for anything
/// but a table, and for an empty one. Number keys make an array in the order of traversal, string keys an
/// object; a boolean becomes 1 or 0, a whole number in the range of an int an integer, any other number a
/// float. What is neither of these, text nor table is left out. Raises no Lua error; after an exception the
/// caller resets Lua's stack.
/// @throws nlohmann::json::type_error for keys of both kinds in one table
/// @throws std::length_error for tables nested more than 1,000 levels deep, and where Lua's stack has no room
void get_arg_json(lua_State* L, int index, json& out);

/// Pushes exactly one Lua value; nil for null, for a value nested more than 1,000 levels deep, and where
/// Lua's stack has no room. Integers are narrowed to an int. May raise Lua's memory error.
void pushvalue(lua_State* L, const json& value);

} // namespace lua_utility
