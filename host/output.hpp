#pragma once
// Writing through the output parameters of the API.

#include <type_traits>

/// Stores a result where the caller asked for it; a caller that gives no place gets none.
template <class T>
void put(T* out, std::type_identity_t<T> value) {
    if (out)
        *out = value;
}
