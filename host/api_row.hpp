#pragma once
// What one row of the API is: a function, the adapter that script engines call, and the texts that describe
// it. A row is declared by function, base name, parameter names and help; the rest follows from the
// signature.

#include "host/definition_text.hpp"
#include "host/export.hpp"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

/// A row, as the host's registration wants it: all constants, alive as long as the library.
struct ApiRow {
    void* function;
    void* vararg;           ///< void* (void** argv, int argc)
    const char* definition; ///< return type, parameter types, parameter names, help; each ends with a NUL
    const char* api_name;
    const char* definition_name;
    const char* vararg_name;
    const char* withdraw_api_name;
    const char* withdraw_definition_name;
    const char* withdraw_vararg_name;
};

struct ApiDefineList {
    const ApiRow* rows;
    std::size_t count;
};

/// Function and adapter of the rows that only document what the script modules offer; gives null.
extern "C" MK_EXPORT void* __verarg_empty(void** argv, int argc);

/// A result as the word that the bridge expects. An int result is a code, and only whether it is 0 passes.
template <class R>
void* to_word(R result) {
    if constexpr (std::is_pointer_v<R>)
        return result;
    else
        return reinterpret_cast<void*>(static_cast<std::uintptr_t>(result != R{}));
}

/// The failure of each kind of result: false, null, or the code 1.
template <class R>
constexpr R failure = R(std::is_same_v<R, int> ? 1 : 0);
template <class R>
constexpr R* failure<R*> = nullptr;

/// Whether `<name>_sz` stands behind the name of each text that is written to.
template <class... A>
consteval bool texts_have_sizes(std::string_view names) {
    const auto name = definition_text::split_names<sizeof...(A) + 1>(names);
    std::size_t i = 0;
    return (
        (++i, !std::is_same_v<A, char*> || (name[i].size() == name[i - 1].size() + 3 &&
                                            name[i].starts_with(name[i - 1]) && name[i].ends_with("_sz"))) &&
        ...);
}

/// What follows from a function's signature.
template <auto Function>
struct Entry;

template <class R, class... A, R (*Function)(A...)>
struct Entry<Function> {
    /// The adapter: arguments by position, the result as a word. No exception passes into the host.
    static void* vararg(void** argv, int) {
        return [argv]<std::size_t... I>(std::index_sequence<I...>) {
            try {
                return to_word(Function(definition_text::from_word<A>(argv[I])...));
            } catch (...) {
                return to_word(failure<R>);
            }
        }
        (std::index_sequence_for<A...>{});
    }

    /// The definition text of a row on this function.
    template <Text Names, Text Help>
    static consteval const char* definition() {
        static_assert(texts_have_sizes<A...>(Names.view()), "a text that is written to needs its size");
        return Definition<Function>::template text<Names, Help>.data();
    }
};
