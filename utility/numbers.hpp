#pragma once
// Conversions of the host's doubles that have a defined result for every value.

#include <cstdint>
#include <limits>

/// Cuts the fraction off; values beyond an int give its nearest end, and what is no number gives 0.
inline int truncate_to_int(double value) {
    using Limits = std::numeric_limits<int>;
    if (value >= Limits::max())
        return Limits::max();
    if (value <= Limits::min())
        return Limits::min();
    return value == value ? static_cast<int>(value) : 0;
}

/// The handle whose address the host delivers as a double (`P_PROJECT`): null for anything that is no
/// address.
template <class T>
T* handle_from_value(double value) {
    constexpr double addresses = 18446744073709551616.0; // 2^64
    return value > 0.0 && value < addresses ? reinterpret_cast<T*>(static_cast<std::uintptr_t>(value))
                                            : nullptr;
}
