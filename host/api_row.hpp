#pragma once
// What one row of the API is: a function, the adapter that script engines call, and the texts that describe
// it. A row is declared by function, base name, parameter names and help; the rest follows here from the
// signature.

#include "host/export.hpp"
#include "host/host_types.hpp"

#include <algorithm>
#include <array>
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

/// The word that the host's script bridge has for a C++ type. No word, no row.
template <class T>
struct TypeWord;

#define MK_TYPE_WORD(type)                                                                                   \
    template <>                                                                                              \
    struct TypeWord<type> {                                                                                  \
        static constexpr std::string_view value = #type;                                                     \
    };
MK_TYPE_WORD(bool)
MK_TYPE_WORD(int)
MK_TYPE_WORD(double)
MK_TYPE_WORD(bool*)
MK_TYPE_WORD(int*)
MK_TYPE_WORD(double*)
MK_TYPE_WORD(char*)
MK_TYPE_WORD(const char*)
MK_TYPE_WORD(ReaProject*)
MK_TYPE_WORD(MediaTrack*)
MK_TYPE_WORD(MediaItem*)
#undef MK_TYPE_WORD

/// A text that can be a template argument.
template <std::size_t Size>
struct Text {
    char data[Size];
    consteval Text(const char (&text)[Size]) { std::copy_n(text, Size, data); }
    constexpr std::string_view view() const { return {data, Size - 1}; }
};

/// An argument out of the word that the host's script bridge passes for it.
template <class T>
T from_word(void* word) {
    if constexpr (std::is_same_v<T, int>)
        return static_cast<int>(reinterpret_cast<std::intptr_t>(word)); // the low 32 bits
    else if constexpr (std::is_same_v<T, bool>)
        return word != nullptr;
    else if constexpr (std::is_same_v<T, double>)
        return word ? *static_cast<const double*>(word) : 0.0;
    else
        return static_cast<T>(word);
}

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

/// Whether the parameter names say what the signature says: as many names as parameters, `...Out` (or
/// `...OutNeedBig`) on exactly those that are written through, and `<name>_sz` behind each text buffer.
template <class... A>
consteval bool names_fit(std::string_view names) {
    constexpr std::size_t count = sizeof...(A);
    constexpr bool is_output[] = {(std::is_same_v<A, bool*> || std::is_same_v<A, int*> ||
                                   std::is_same_v<A, double*> || std::is_same_v<A, char*>)...};
    constexpr bool is_text_output[] = {std::is_same_v<A, char*>...};
    std::string_view name[count];
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t comma = names.find(',');
        if (names.empty() || (comma == std::string_view::npos) != (i + 1 == count))
            return false;
        name[i] = names.substr(0, comma);
        names.remove_prefix(comma == std::string_view::npos ? names.size() : comma + 1);
        if (is_output[i] != (name[i].ends_with("Out") || name[i].ends_with("OutNeedBig")))
            return false;
        if (i > 0 && is_text_output[i - 1] &&
            (!name[i].starts_with(name[i - 1]) || name[i].substr(name[i - 1].size()) != "_sz"))
            return false;
    }
    return !is_text_output[count - 1];
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
                return to_word(Function(from_word<A>(argv[I])...));
            } catch (...) {
                return to_word(failure<R>);
            }
        }
        (std::index_sequence_for<A...>{});
    }

    template <Text Names, Text Help>
    static consteval auto make_definition() {
        static_assert(names_fit<A...>(Names.view()), "the parameter names do not fit the signature");
        constexpr std::string_view mark = "[MK:API]";
        constexpr std::size_t types_size = (TypeWord<A>::value.size() + ...) + sizeof...(A) - 1;
        constexpr std::size_t size = TypeWord<R>::value.size() + types_size + Names.view().size() +
                                     mark.size() + Help.view().size() + 4;
        std::array<char, size> text{};
        char* end = text.data();
        const auto append = [&end](std::string_view part, char after) {
            end = std::copy(part.begin(), part.end(), end);
            *end++ = after;
        };
        append(TypeWord<R>::value, '\0');
        (append(TypeWord<A>::value, ','), ...);
        end[-1] = '\0';
        append(Names.view(), '\0');
        end = std::copy(mark.begin(), mark.end(), end);
        append(Help.view(), '\0');
        return text;
    }

    /// The definition text of a row on this function.
    template <Text Names, Text Help>
    static constexpr auto definition = make_definition<Names, Help>();
};
