#pragma once
// The wrapper of every function that Python calls.

#include "bindings/python/functions.hpp"
#include "utility/mk_utility.hpp"

#include <string>
#include <type_traits>
#include <utility>

namespace python_api {

/// Runs `body`; an exception becomes `failure`.
template <class Body, class Result = std::invoke_result_t<Body>>
Result door(Body body, std::type_identity_t<Result> failure) {
    try {
        return body();
    } catch (...) {
        return failure;
    }
}

/// The same with the zero of the result's type, or nothing, as the failure.
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

/// Writes a text to a buffer of Python's, which are all of one size; a longer text is cut.
inline void put_text(char* out, std::string text) {
    constexpr int buffer_size = 1024;
    mk_utility::strcpy(out, buffer_size, std::move(text));
}

} // namespace python_api
