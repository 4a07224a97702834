#pragma once
// Definition texts, which describe a function's parameters and result to script engines. Plug-ins register
// them, and the headless host has them for its own functions. The types are derived from the C++ signature at
// compile time; parameter names and help are written where the function is listed.

#include "common/plugin_abi.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

namespace definition_text {

/// The name of a C++ type in definition texts. A type without one cannot be used in a definition.
template <class T>
struct TypeWord;

/// Use at global scope: makes a type's own name its name in definition texts.
#define DEFINITION_TYPE_WORD(type) DEFINITION_TYPE_WORD_AS(type, #type)
#define DEFINITION_TYPE_WORD_AS(type, word)                                                                  \
    template <>                                                                                              \
    struct definition_text::TypeWord<type> {                                                                 \
        static constexpr std::string_view value = word;                                                      \
    };

/// A string that can be a template argument.
template <std::size_t Size>
struct Text {
    char data[Size];
    consteval Text(const char (&text)[Size]) { std::copy_n(text, Size, data); }
    constexpr std::string_view view() const { return {data, Size - 1}; }
};

/// Returns the first names of a comma-separated list; empty if there are fewer.
template <std::size_t Count>
constexpr std::array<std::string_view, Count> split_names(std::string_view names) {
    std::array<std::string_view, Count> parts{};
    for (std::string_view& part : parts) {
        part = names.substr(0, names.find(','));
        names.remove_prefix(std::min(part.size() + 1, names.size()));
    }
    return parts;
}

/// Returns the number of names in the list.
constexpr std::size_t count_names(std::string_view names) {
    return names.empty() ? 0U : 1U + static_cast<std::size_t>(std::ranges::count(names, ','));
}

/// Return type, parameter types, parameter names, help; each ends with a NUL.
template <Text Names, Text Help, class R, class... A>
consteval auto make() {
    static_assert(count_names(Names.view()) == sizeof...(A), "a name for each parameter");
    constexpr std::size_t commas = sizeof...(A) > 0 ? sizeof...(A) - 1 : 0;
    constexpr std::size_t size = TypeWord<R>::value.size() + (TypeWord<A>::value.size() + ... + commas) +
                                 Names.view().size() + Help.view().size() + 4;
    std::array<char, size> text{};
    char* end = text.data();
    const auto append = [&end](std::string_view part) { end = std::copy(part.begin(), part.end(), end); };
    append(TypeWord<R>::value);
    ++end;
    std::size_t left = sizeof...(A);
    ((append(TypeWord<A>::value), append(--left > 0 ? "," : "")), ...);
    ++end;
    append(Names.view());
    ++end;
    append(Help.view());
    return text;
}

/// The same at run time, for a signature given by its type names.
inline std::string compose(std::string_view result, std::initializer_list<std::string_view> parameters,
                           std::string_view names, std::string_view help) {
    std::string text(result);
    char separator = '\0';
    for (const std::string_view parameter : parameters) {
        text.append(1, separator).append(parameter);
        separator = ',';
    }
    text.append(parameters.size() == 0 ? 2 : 1, '\0').append(names);
    return text.append(1, '\0').append(help);
}

/// Converts an argument from the form in which script engines pass it: an int or bool is in the bits of the
/// pointer, a double is passed by address, and anything else is the pointer itself.
template <class T>
T decode_argument(void* argument) {
    if constexpr (std::is_same_v<T, int>)
        return static_cast<int>(reinterpret_cast<std::intptr_t>(argument)); // the low 32 bits
    else if constexpr (std::is_same_v<T, bool>)
        return argument != nullptr;
    else if constexpr (std::is_same_v<T, double>)
        return argument ? *static_cast<const double*>(argument) : 0.0;
    else
        return static_cast<T>(argument);
}

} // namespace definition_text

DEFINITION_TYPE_WORD(void)
DEFINITION_TYPE_WORD(void*)
DEFINITION_TYPE_WORD(bool)
DEFINITION_TYPE_WORD(bool*)
DEFINITION_TYPE_WORD(int)
DEFINITION_TYPE_WORD(int*)
DEFINITION_TYPE_WORD(double)
DEFINITION_TYPE_WORD(double*)
DEFINITION_TYPE_WORD(char*)
DEFINITION_TYPE_WORD(const char*)
DEFINITION_TYPE_WORD(const char**)

#define HANDLE_TYPE(type, python_class) DEFINITION_TYPE_WORD(type*)
#include "common/handle_types.inc"
#undef HANDLE_TYPE
