#pragma once
// Conversions of the host's doubles with a defined result for every value.

#include <cstdint>
#include <limits>

/// Truncates to an int. Values out of range give the nearest int, and NaN gives 0.
inline int truncate_to_int(double value) {
    using Limits = std::numeric_limits<int>;
    if (value >= Limits::max())
        return Limits::max();
    if (value <= Limits::min())
        return Limits::min();
    return value == value ? static_cast<int>(value) : 0;
}

/// Converts a time to a whole frame. Results at frame boundaries depend on the two factors, which do not cancel
/// out in doubles.
inline int frame_at(double frames_per_second, double seconds) {
    return truncate_to_int(frames_per_second * (seconds * 10000.0) * 0.0001);
}

/// Returns the handle whose address the host delivers as a double (`P_PROJECT`), or null for a value that is
/// not an address.
template <class T>
T* handle_from_value(double value) {
    constexpr double addresses = 18446744073709551616.0; // 2^64
    return value > 0.0 && value < addresses ? reinterpret_cast<T*>(static_cast<std::uintptr_t>(value))
                                            : nullptr;
}
