#pragma once
// Arguments of the API that callers may leave null: strings and outputs.

#include <type_traits>

/// Reads a null string as an empty one.
constexpr const char* text_or_empty(const char* text) { return text ? text : ""; }

/// Stores a result in the caller's output parameter, if there is one.
template <class T>
void put(T* out, std::type_identity_t<T> value) {
    if (out)
        *out = value;
}
