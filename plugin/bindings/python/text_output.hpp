#pragma once
// Strings that the functions for Python write to buffers whose size is not passed.

#include "utility/mk_utility.hpp"

#include <string>
#include <utility>

namespace python_api {

/// Writes a string to a buffer of 1,024 bytes. A longer string is cut.
inline void put_text(char* out, std::string text) {
    constexpr int buffer_size = 1024;
    mk_utility::strcpy(out, buffer_size, std::move(text));
}

} // namespace python_api
