#pragma once
// Definition texts, as script engines read them: what a function takes and gives, in words. Plug-ins register
// them, the headless host has them for its own functions. The types follow from the C++ signature while
// compiling; parameter names and help are written where the function is listed.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace definition_text {

/// The word for a C++ type. No word, no text.
template <class T>
struct TypeWord;

/// At global scope: gives a type its own name as its word.
#define DEFINITION_TYPE_WORD(type) DEFINITION_TYPE_WORD_AS(type, #type)
#define DEFINITION_TYPE_WORD_AS(type, word)                                                                  \
    template <>                                                                                              \
    struct definition_text::TypeWord<type> {                                                                 \
        static constexpr std::string_view value = word;                                                      \
    };

/// A text that can be a template argument.
template <std::size_t Size>
struct Text {
    char data[Size];
    consteval Text(const char (&text)[Size]) { std::copy_n(text, Size, data); }
    constexpr std::string_view view() const { return {data, Size - 1}; }
};

/// The first names of a list with commas, one by one; empty where there are fewer.
template <std::size_t Count>
constexpr std::array<std::string_view, Count> split_names(std::string_view names) {
    std::array<std::string_view, Count> parts;
    for (std::string_view& part : parts) {
        part = names.substr(0, names.find(','));
        names.remove_prefix(std::min(part.size() + 1, names.size()));
    }
    return parts;
}

/// How many names the list holds.
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

/// An argument out of the word that a script engine passes for it: an int or bool in its bits, a double by
/// address, all else as the pointer it is.
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
