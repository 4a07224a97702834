#pragma once
// A function for Python made from a logic function that fills a list. Its inputs and count are derived from
// the logic function's signature.

#include "bindings/python/guarded_call.hpp"
#include "bindings/python/value_pools.hpp"
#include "bindings/reference/list_functions.hpp"
#include "host_api/arguments.hpp"
#include "object/mk_list.hpp"

#include <cstddef>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace python_api {

/// Adds a list to the pool of its kind.
/// @returns the pooled array, whose address is the handle
template <class T>
const void* pool_list(std::vector<T>& list) {
    if constexpr (std::is_base_of_v<mk_object::mk_List, T>)
        return mk_object::mk_List::pool_mkList_array<T>(list);
    else
        return python_utility::set_obj_topool<T>(list);
}

/// Converts an argument of Python's to the logic function's input.
template <class T>
T to_input(T value) {
    return value;
}
inline const char* to_input(const char* text) { return text_or_empty(text); }

/// Calls `logic` with the inputs, and with the caller's count if there is one.
/// @param arguments  the inputs, the handle's place, and the count's place if the logic has a count
template <auto logic, class Arguments, std::size_t... I>
bool fill_list(const Arguments& arguments, typename ListSignature<decltype(logic)>::List& list,
               std::index_sequence<I...>) {
    if constexpr (ListSignature<decltype(logic)>::has_count) {
        int unused = 0;
        int* count = std::get<sizeof...(I) + 1>(arguments);
        return logic(to_input(std::get<I>(arguments))..., list, count ? *count : unused);
    } else {
        return logic(to_input(std::get<I>(arguments))..., list);
    }
}

/// Calls `logic` with an empty list, adds the list to the pool and passes its handle to Python. A list of
/// strings is returned whatever the result, any other list only if the result is true. Without a place for
/// the handle, nothing is added.
template <auto logic, class... A>
bool list_call(A... passed) {
    using Signature = ListSignature<decltype(logic)>;
    constexpr bool is_always_returned = std::is_same_v<typename Signature::List::value_type, std::string>;
    const std::tuple<A...> arguments{passed...};
    typename Signature::List list;
    const auto fill = [&] {
        return fill_list<logic>(arguments, list, std::make_index_sequence<Signature::inputs>{});
    };
    return guarded([&] {
        const bool ok = is_always_returned ? guarded(fill) : fill();
        Handle* out = std::get<Signature::inputs>(arguments);
        if (out && (ok || is_always_returned))
            *out = reinterpret_cast<Handle>(pool_list(list));
        return ok;
    });
}

} // namespace python_api
