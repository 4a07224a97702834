#pragma once
// A Lua function made from a logic function that fills a list. Its arguments, result and count are derived
// from the logic function's signature.

#include "bindings/lua/arguments.hpp"
#include "bindings/lua/results.hpp"

#include <exception>
#include <tuple>
#include <type_traits>
#include <utility>

namespace lua_utility {

template <class T>
using Value = std::remove_cvref_t<T>;

template <class Signature>
struct ListCall;

/// @tparam A  the logic function's parameters: the inputs, then the list, then optionally the count
template <class... A>
struct ListCall<bool (*)(A...)> {
    static constexpr bool has_count =
        std::is_same_v<std::tuple_element_t<sizeof...(A) - 1, std::tuple<A...>>, int&>;
    static constexpr std::size_t inputs = sizeof...(A) - (has_count ? 2 : 1);
    using Values = Value<std::tuple_element_t<inputs, std::tuple<A...>>>;

    template <auto logic>
    static int run(lua_State* L) {
        bool ok = false;
        List<typename Values::value_type> list;
        int count = 0;
        try {
            ok = call<logic>(L, list.values, count, std::make_index_sequence<inputs>{});
            list.borrow_records();
        } catch (...) { // the script gets false and the entries collected so far
            ok = false;
        }
        if constexpr (has_count)
            return push_results(L, false, ok, list, count);
        else
            return push_results(L, false, ok, list);
    }

private:
    template <auto logic, std::size_t... I>
    static bool call(lua_State* L, Values& values, int& count, std::index_sequence<I...>) {
        std::tuple<Value<std::tuple_element_t<I, std::tuple<A...>>>...> arguments{
            get_arg<Value<std::tuple_element_t<I, std::tuple<A...>>>>(L, static_cast<int>(I) + 1)...};
        if constexpr (has_count)
            return logic(std::get<I>(arguments)..., values, count);
        else
            return logic(std::get<I>(arguments)..., values);
    }
};

/// Reads the arguments, calls `logic` with an empty list and returns its result, the list, and the count if
/// there is one.
template <auto logic>
int list_call(lua_State* L) {
    return ListCall<decltype(logic)>::template run<logic>(L);
}

} // namespace lua_utility
