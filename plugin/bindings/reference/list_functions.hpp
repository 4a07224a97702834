#pragma once
// The logic functions that fill lists, and how they are declared: the inputs, then the list, then optionally
// the count. The functions of all script languages are derived from that.

#include "api/media/peaks.hpp"
#include "api/project/dialogs.hpp"
#include "api/project/files.hpp"
#include "api/project/strings.hpp"
#include "api/track/lists.hpp"

#include <cstddef>
#include <tuple>
#include <type_traits>

/// The parts of a logic function's type.
template <class Function>
struct ListSignature;

template <class... A>
struct ListSignature<bool (*)(A...)> {
    /// The type of a parameter's value.
    template <std::size_t I>
    using Value = std::remove_cvref_t<std::tuple_element_t<I, std::tuple<A...>>>;

    static constexpr bool has_count =
        std::is_same_v<std::tuple_element_t<sizeof...(A) - 1, std::tuple<A...>>, int&>;
    static constexpr std::size_t inputs = sizeof...(A) - (has_count ? 2 : 1);
    using List = Value<inputs>; ///< a std::vector
};
