#pragma once
// `reaper.array`: numbers in one block that functions can fill, as `reaper.new_array` makes it. Scripts read
// and write it by index from 1.

#include "headless/script/lua_function.hpp"

#include <cstddef>
#include <span>

namespace headless {

/// The head of the block; the numbers lie behind it.
struct NumberArray {
    std::size_t capacity;
    std::size_t size; ///< at most the capacity

    double* numbers() { return reinterpret_cast<double*>(this + 1); }
};

/// The array at a stack index, null for anything else.
NumberArray* to_number_array(lua_State* L, int index);

/// Makes the type of these arrays known to the interpreter; before their functions are called.
void open_number_arrays(lua_State* L);

/// `new_array`.
std::span<const LuaFunction> number_array_functions();

/// What an array answers to: `array.clear()` as well as `array:clear()`.
std::span<const LuaFunction> number_array_methods();

} // namespace headless
