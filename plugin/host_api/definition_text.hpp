#pragma once
// Definition texts of this library's functions, with a check of the parameter names.

#include "common/definition_text.hpp"
#include "host_api/host_types.hpp"

using definition_text::Text;

/// True for a parameter that the function writes through. The name of such a parameter ends in "Out" or
/// "OutNeedBig".
template <class A>
constexpr bool is_output =
    std::is_pointer_v<A>
        ? std::is_arithmetic_v<std::remove_pointer_t<A>> && !std::is_const_v<std::remove_pointer_t<A>>
        : std::is_lvalue_reference_v<A> && !std::is_const_v<std::remove_reference_t<A>>;

/// Returns true if no name is empty or has a space, and exactly the output parameters have a name that ends
/// in "Out" or "OutNeedBig".
template <class... A>
consteval bool names_fit(std::string_view names) {
    [[maybe_unused]] const auto name = definition_text::split_names<sizeof...(A)>(names);
    [[maybe_unused]] std::size_t i = 0;
    return ((is_output<A> == (name[i].ends_with("Out") || name[i].ends_with("OutNeedBig")) &&
             !name[i].empty() && name[i++].find(' ') == std::string_view::npos) &&
            ...);
}

/// What is derived from a function's signature.
template <auto Function>
struct Definition;

template <class R, class... A, R (*Function)(A...)>
struct Definition<Function> {
    /// Return type, parameter types, parameter names, help; each ends with a NUL.
    template <Text Names, Text Help>
    static constexpr auto text = [] {
        static_assert(names_fit<A...>(Names.view()), "the parameter names do not fit the signature");
        return definition_text::make<Names, Help, R, A...>();
    }();
};
