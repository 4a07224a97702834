#pragma once
// `reaper.array`: numbers in one block that functions can fill, as `reaper.new_array` makes it. Scripts read
// and write it by index from 1.

#include <lua.hpp>

#include <cstddef>

namespace headless {

/// The head of the block; the numbers lie behind it.
struct NumberArray {
    std::size_t capacity;
    std::size_t size; ///< at most the capacity

    double* numbers() { return reinterpret_cast<double*>(this + 1); }
};

/// The array at a stack index, null for anything else.
NumberArray* to_number_array(lua_State* L, int index);

/// Sets `new_array` in the table on top of the stack: (table or array, size) or (size); the size counts where
/// both are given. Methods: clear, copy, get_alloc, resize, table.
void add_new_array(lua_State* L);

} // namespace headless
