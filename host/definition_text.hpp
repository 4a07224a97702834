#pragma once
// Definition texts: a function's types, parameter names and help, as the host's script engines read them. The
// types follow from the C++ signature while compiling; names and help are written where the function is
// listed.

#include "host/host_types.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <type_traits>

/// The word that definition texts have for a C++ type. No word, no text.
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

/// A text that can be a template argument.
template <std::size_t Size>
struct Text {
    char data[Size];
    consteval Text(const char (&text)[Size]) { std::copy_n(text, Size, data); }
    constexpr std::string_view view() const { return {data, Size - 1}; }
};

/// What a function writes through. The names of such parameters end in "Out", or "OutNeedBig".
template <class A>
constexpr bool is_output =
    std::is_pointer_v<A>
        ? std::is_arithmetic_v<std::remove_pointer_t<A>> && !std::is_const_v<std::remove_pointer_t<A>>
        : std::is_lvalue_reference_v<A> && !std::is_const_v<std::remove_reference_t<A>>;

/// The parameter names of a list, one by one.
template <std::size_t Count>
constexpr std::array<std::string_view, Count> split_names(std::string_view names) {
    std::array<std::string_view, Count> parts;
    for (std::string_view& part : parts) {
        part = names.substr(0, names.find(','));
        names.remove_prefix(std::min(part.size() + 1, names.size()));
    }
    return parts;
}

/// Whether there are as many names as parameters, each ending in "Out" exactly where it is written through.
template <class... A>
consteval bool names_fit(std::string_view names) {
    constexpr std::size_t count = sizeof...(A);
    if constexpr (count == 0)
        return names.empty();
    const auto name = split_names<count>(names);
    constexpr std::array<bool, count> output{is_output<A>...};
    for (std::size_t i = 0; i < count; ++i)
        if (name[i].empty() || output[i] != (name[i].ends_with("Out") || name[i].ends_with("OutNeedBig")))
            return false;
    return static_cast<std::size_t>(std::ranges::count(names, ',')) == count - 1;
}

/// What follows from a function's signature.
template <auto Function>
struct Definition;

template <class R, class... A, R (*Function)(A...)>
struct Definition<Function> {
    template <Text Names, Text Help>
    static consteval auto make_text() {
        static_assert(names_fit<A...>(Names.view()), "the parameter names do not fit the signature");
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

    /// Return type, parameter types, parameter names, help; each ends with a NUL.
    template <Text Names, Text Help>
    static constexpr auto text = make_text<Names, Help>();
};
