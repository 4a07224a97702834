#pragma once
// How script engines call a function: by its definition text, with an array of arguments. Plug-ins register
// their functions in this form, and the workstation offers its own in the same one.
//
// Parameter names express what types cannot: `...Out` is a result, `...InOptional` may be omitted,
// `...NeedBig` needs a large buffer, `<name>_sz` is the size of the buffer before it and supplied by the
// engine. A string that the function writes to and that is not an `Out` is both argument and result.

#include <cstdint>
#include <type_traits>

namespace headless::workstation {

/// Takes one pointer per argument: an int or bool is in its bits, a double is passed by address, and anything
/// else is the pointer itself.
/// @returns an int, a bool or a pointer in the bits of the result, a double by address, null for void
using ScriptCall = void*(void** arguments, int count);

/// Converts a result to the form in which a ScriptCall returns it. The address of a double is valid until the
/// thread's next call.
template <class R>
void* encode_result(R result) {
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
