#pragma once
// The interface through which script engines see a function: a definition text and a call with an array of
// words, as plug-ins register them. For host functions both are derived from the C++ signature at compile
// time; only the parameters' names and the help are written beside the function.
//
// Names express what types cannot: `...Out` is a result, `...InOptional` may be omitted, `...NeedBig` needs a
// large buffer, `<name>_sz` is the size of the buffer before it and supplied by the engine. A string that the
// function writes to and that is not an `Out` is both argument and result.

#include "common/definition_text.hpp"

#include <cstdint>
#include <type_traits>
#include <utility>

namespace headless::workstation {

/// One word per argument: an int or bool in its bits, a double by address, everything else as the pointer it
/// is.
/// @returns an int, a bool or a pointer in the word's bits, a double by address, null for void
using ScriptCall = void*(void** words, int count);

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

} // namespace headless::workstation
