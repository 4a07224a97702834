#pragma once
// Identifiers as C functions pass them.

#include "headless/chunk/guid.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace headless::functions {

/// The 16 bytes of a C GUID by their places in the text: a 32-bit and two 16-bit numbers in the order of this
/// machine, which is little-endian, then eight bytes.
inline constexpr std::array<std::size_t, 16> c_guid_order{3, 2, 1,  0,  5,  4,  7,  6,
                                                          8, 9, 10, 11, 12, 13, 14, 15};

/// @param guid points to the 16 bytes of a C GUID
inline chunk::Guid guid_from_c(const void* guid) {
    std::array<std::uint8_t, 16> bytes{};
    std::memcpy(bytes.data(), guid, bytes.size());
    chunk::Guid result;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        result.bytes[i] = bytes[c_guid_order[i]];
    return result;
}

/// @param bytes receives the 16 bytes of a C GUID
inline void put_c_guid(const chunk::Guid& guid, void* bytes) {
    std::array<std::uint8_t, 16> result{};
    for (std::size_t i = 0; i < result.size(); ++i)
        result[c_guid_order[i]] = guid.bytes[i];
    std::memcpy(bytes, result.data(), result.size());
}

} // namespace headless::functions
