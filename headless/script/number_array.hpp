#pragma once
// `reaper.array`: numbers in one block that functions can fill, created by `reaper.new_array`. Scripts read
// and write it by index from 1.

#include "headless/script/lua_function.hpp"

#include <cstddef>
#include <span>

namespace headless::script {

/// The header of the block. The numbers follow it.
struct NumberArray {
    std::size_t capacity;
    std::size_t size; ///< at most the capacity

    double* numbers() { return reinterpret_cast<double*>(this + 1); }
};

/// The array at a stack index, null for anything else.
NumberArray* to_number_array(lua_State* L, int index);

/// Registers the type of these arrays with the interpreter. To be called before their functions are called.
void open_number_arrays(lua_State* L);

/// `new_array`.
std::span<const LuaFunction> number_array_functions();

/// The methods of an array: `array.clear()` as well as `array:clear()`.
std::span<const LuaFunction> number_array_methods();

} // namespace headless::script
