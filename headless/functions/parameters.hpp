#pragma once
// Parameters and results of host functions. Callers pass handles; a host function takes the objects behind
// them:
//
//   project::Track&   a live track. If the handle is null, stale or foreign, the function is not called, and
//                     its caller gets 0, false or null.
//   project::Track*   the same, but the function is called with null
//
// As a result, a pointer to an object becomes its handle. All other types are those of C.

#include "headless/workstation/workstation.hpp"

#include <type_traits>
#include <utility>

namespace headless::functions {

using workstation::Workstation;

/// The objects that handles of a type refer to.
template <class Handle>
using ObjectOf =
    std::remove_pointer_t<decltype(std::declval<const Workstation&>().live(std::declval<Handle*>()))>;

template <class Object>
struct HandleOf;
#define HANDLE_TYPE(type, python_class)                                                                      \
    template <>                                                                                              \
    struct HandleOf<ObjectOf<type>> : std::type_identity<type> {};
#include "common/handle_types.inc"
#undef HANDLE_TYPE

template <class T>
concept HasHandle = requires {
    typename HandleOf<std::remove_const_t<T>>::type;
};

/// The type that callers see of a parameter or result.
template <class T>
struct CTypeOf : std::type_identity<T> {};
template <HasHandle Object>
struct CTypeOf<Object*> : std::type_identity<typename HandleOf<std::remove_const_t<Object>>::type*> {};
template <HasHandle Object>
struct CTypeOf<Object&> : CTypeOf<Object*> {};

template <class T>
using CType = typename CTypeOf<T>::type;

/// An argument after its handle has been looked up: an object is a pointer, null if there is none.
template <class T>
using Resolved = std::conditional_t<std::is_reference_v<T>, std::add_pointer_t<T>, T>;

template <class T>
Resolved<T> resolve(const Workstation& workstation, CType<T> argument) {
    if constexpr (std::is_same_v<CType<T>, T>)
        return argument;
    else
        return workstation.live(argument);
}

/// Whether the function cannot be called, as an object that it needs does not exist.
template <class T>
bool is_missing(Resolved<T> argument) {
    if constexpr (std::is_reference_v<T>)
        return !argument;
    else
        return false;
}

template <class T>
T pass(Resolved<T> argument) {
    if constexpr (std::is_reference_v<T>)
        return *argument;
    else
        return argument;
}

/// Converts a function's result to what its caller gets.
template <class R>
CType<R> to_c(R result) {
    if constexpr (std::is_same_v<CType<R>, R>)
        return result;
    else
        return result ? Workstation::handle(*result) : nullptr;
}

} // namespace headless::functions
