#pragma once
// The wrapper of every function that Python calls.

#include "bindings/python/functions.hpp"
#include "utility/mk_utility.hpp"

#include <string>
#include <type_traits>
#include <utility>

namespace python_api {

/// Runs `body`. Returns `failure` if it throws.
template <class Body, class Result = std::invoke_result_t<Body>>
Result door(Body body, std::type_identity_t<Result> failure) {
    try {
        return body();
    } catch (...) {
        return failure;
    }
}

/// The same, with the zero of the result's type as the failure, or nothing if there is no result.
template <class Body>
auto door(Body body) -> std::invoke_result_t<Body> {
    using Result = std::invoke_result_t<Body>;
    try {
        return body();
    } catch (...) {
        return Result();
    }
}

constexpr const char* text_or_empty(const char* text) { return text ? text : ""; }

/// Writes a string to a buffer of Python's, which always has the same size. A longer string is cut.
inline void put_text(char* out, std::string text) {
    constexpr int buffer_size = 1024;
    mk_utility::strcpy(out, buffer_size, std::move(text));
}

} // namespace python_api
