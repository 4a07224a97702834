#pragma once
// Every function that Python calls runs in a guarded call, so that no exception leaves it.

#include "bindings/python/functions.hpp"

#include <type_traits>

namespace python_api {

/// Runs `body`. Returns `result_of_failure` if it throws.
template <class Body, class Result = std::invoke_result_t<Body>>
Result guarded(Body body, std::type_identity_t<Result> result_of_failure) {
    try {
        return body();
    } catch (...) {
        return result_of_failure;
    }
}

/// The same, with the zero of the result's type for a failure, or nothing if there is no result.
template <class Body>
auto guarded(Body body) -> std::invoke_result_t<Body> {
    using Result = std::invoke_result_t<Body>;
    try {
        return body();
    } catch (...) {
        return Result();
    }
}

} // namespace python_api
