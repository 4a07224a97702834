#pragma once
// Writing through the output parameters of the API.

#include <type_traits>

/// Stores a result in the caller's output parameter, if there is one.
template <class T>
void put(T* out, std::type_identity_t<T> value) {
    if (out)
        *out = value;
}
