#pragma once
// What is derived from the signature of a registered function: its definition text, and the adapter that
// script engines call. A row of the API is declared by function, base name, parameter names and help.

#include "host_api/definition_text.hpp"
#include "host_api/failure.hpp"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

/// Converts a result to the word that the bridge expects. An int result is a code, of which only whether it
/// is 0 is passed on.
template <class R>
void* result_word(R result) {
    if constexpr (std::is_pointer_v<R>)
        return result;
    else
        return reinterpret_cast<void*>(static_cast<std::uintptr_t>(result != R{}));
}

/// Returns whether the name of each output string is followed by `<name>_sz`.
template <class... A>
consteval bool texts_have_sizes(std::string_view names) {
    const auto name = definition_text::split_names<sizeof...(A) + 1>(names);
    std::size_t i = 0;
    return (
        (++i, !std::is_same_v<A, char*> || (name[i].size() == name[i - 1].size() + 3 &&
                                            name[i].starts_with(name[i - 1]) && name[i].ends_with("_sz"))) &&
        ...);
}

/// What is derived from a function's signature.
template <auto Function>
struct ApiFunction;

template <class R, class... A, R (*Function)(A...)>
struct ApiFunction<Function> {
    /// The adapter: takes the arguments by position and returns the result as a word. No exception reaches
    /// the host.
    static void* vararg(void** argv) {
        return [argv]<std::size_t... I>(std::index_sequence<I...>) {
            try {
                return result_word(Function(definition_text::decode_argument<A>(argv[I])...));
            } catch (...) {
                return result_word(failure<R>);
            }
        }
        (std::index_sequence_for<A...>{});
    }

    /// Returns the definition text of a row for this function.
    template <Text Names, Text Help>
    static consteval const char* definition() {
        static_assert(texts_have_sizes<A...>(Names.view()), "a text that is written to needs its size");
        return Definition<Function>::template text<Names, Help>.data();
    }
};
