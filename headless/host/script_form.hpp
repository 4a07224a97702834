#pragma once
// The form in which script engines see a function: a definition text and a call over an array of words, as
// plug-ins register them. For host functions both follow from the C++ signature while compiling; only the
// parameters' names and the help are written, beside the function.
//
// Names tell what types cannot: `...Out` is a result, `...InOptional` may be left out, `...NeedBig` wants a
// large buffer, `<name>_sz` is the size of the buffer before it and supplied by the engine. A text that is
// written to and no `Out` is argument and result.

#include "headless/host/handles.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

namespace headless {

/// One word an argument: an int or bool in its bits, a double by address, all else as the pointer it is.
/// @returns an int, a bool or a pointer in the word's bits, a double by address, null for void
using ScriptCall = void*(void** words, int count);

/// The word for a C++ type in definition texts. No word, no row.
template <class T>
struct TypeWord;

#define FELSPAR_TYPE_WORD(type)                                                                              \
    template <>                                                                                              \
    struct TypeWord<type> {                                                                                  \
        static constexpr std::string_view value = #type;                                                     \
    };
FELSPAR_TYPE_WORD(void)
FELSPAR_TYPE_WORD(bool)
FELSPAR_TYPE_WORD(int)
FELSPAR_TYPE_WORD(double)
FELSPAR_TYPE_WORD(void*)
FELSPAR_TYPE_WORD(bool*)
FELSPAR_TYPE_WORD(int*)
FELSPAR_TYPE_WORD(double*)
FELSPAR_TYPE_WORD(char*)
FELSPAR_TYPE_WORD(const char*)
FELSPAR_TYPE_WORD(const char**)
FELSPAR_TYPE_WORD(ReaProject*)
FELSPAR_TYPE_WORD(MediaTrack*)
FELSPAR_TYPE_WORD(MediaItem*)
FELSPAR_TYPE_WORD(MediaItem_Take*)
FELSPAR_TYPE_WORD(TrackEnvelope*)
FELSPAR_TYPE_WORD(BR_Envelope*)
FELSPAR_TYPE_WORD(PCM_source*)
#undef FELSPAR_TYPE_WORD

/// A text that can be a template argument.
template <std::size_t Size>
struct Text {
    char data[Size];
    consteval Text(const char (&text)[Size]) { std::copy_n(text, Size, data); }
    constexpr std::string_view view() const { return {data, Size - 1}; }
};

template <class T>
T from_word(void* word) {
    if constexpr (std::is_same_v<T, int>) {
        return static_cast<int>(reinterpret_cast<std::intptr_t>(word));
    } else if constexpr (std::is_same_v<T, bool>) {
        return word != nullptr;
    } else if constexpr (std::is_same_v<T, double>) {
        return word ? *static_cast<const double*>(word) : 0.0;
    } else {
        return static_cast<T>(word);
    }
}

template <class R>
void* to_word(R result) {
    if constexpr (std::is_same_v<R, double>) {
        static thread_local double kept = 0.0;
        kept = result;
        return &kept;
    } else if constexpr (std::is_pointer_v<R>) {
        return const_cast<void*>(static_cast<const void*>(result));
    } else {
        return reinterpret_cast<void*>(static_cast<std::intptr_t>(result));
    }
}

/// How many names the list holds.
constexpr std::size_t count_names(std::string_view names) {
    return names.empty() ? 0U : 1U + static_cast<std::size_t>(std::ranges::count(names, ','));
}

/// Return type, parameter types, parameter names, help; each ends with a NUL.
template <Text Names, Text Help, class R, class... A>
consteval auto make_definition() {
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

} // namespace headless
