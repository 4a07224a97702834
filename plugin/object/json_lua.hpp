#pragma once
// Converts Lua tables to JSON values and back.

#include <nlohmann/json.hpp>

struct lua_State;

namespace lua_utility {

using json = nlohmann::json;

/// Reads the table at the absolute stack index into `out`. The caller passes `out` as null, and it stays null
/// if the value is not a table or the table is empty. Number keys make an array in the order of traversal,
/// string keys an object. A boolean becomes 1 or 0, a whole number in the range of an int an integer, any
/// other number a float. Values that are not booleans, numbers, strings or tables are left out. Raises no Lua
/// error; after an exception the caller must reset Lua's stack.
/// @throws nlohmann::json::type_error if a table has keys of both kinds
/// @throws std::length_error if tables nest more than 1,000 levels deep, or if Lua's stack cannot grow
void get_arg_json(lua_State* L, int index, json& out);

/// Pushes exactly one Lua value: nil for null, for a value nested more than 1,000 levels deep, and if Lua's
/// stack cannot grow. Integers are narrowed to an int. May raise Lua's memory error.
void pushvalue(lua_State* L, const json& value);

} // namespace lua_utility
