#pragma once
// A Lua function made from a logic function that fills a list. Its arguments, result and count are derived
// from the logic function's signature.

#include "bindings/lua/arguments.hpp"
#include "bindings/lua/results.hpp"
#include "bindings/reference/list_functions.hpp"
#include "host_api/failure.hpp"

#include <cstddef>
#include <tuple>
#include <utility>

namespace lua_utility {

/// Calls `logic` with the arguments on Lua's stack.
template <auto logic, class Signature = ListSignature<decltype(logic)>, std::size_t... I>
bool fill_list(lua_State* L, typename Signature::List& list, [[maybe_unused]] int& count,
               std::index_sequence<I...>) {
    std::tuple<typename Signature::template Value<I>...> arguments{
        get_arg<typename Signature::template Value<I>>(L, static_cast<int>(I) + 1)...};
    if constexpr (Signature::has_count)
        return logic(std::get<I>(arguments)..., list, count);
    else
        return logic(std::get<I>(arguments)..., list);
}

/// Reads the arguments, calls `logic` with an empty list and returns its result, the list, and the count if
/// there is one.
template <auto logic>
int list_call(lua_State* L) {
    using Signature = ListSignature<decltype(logic)>;
    bool ok = failure<bool>;
    ListResult<typename Signature::List::value_type> list;
    int count = 0;
    try {
        ok = fill_list<logic>(L, list.values, count, std::make_index_sequence<Signature::inputs>{});
        list.borrow_records();
    } catch (...) { // the script gets false and the entries collected so far
        ok = failure<bool>;
    }
    if constexpr (Signature::has_count)
        return push_results(L, failure<bool>, ok, list, count);
    else
        return push_results(L, failure<bool>, ok, list);
}

} // namespace lua_utility
