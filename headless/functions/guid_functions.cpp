// Host functions that make the identifiers of objects and convert them. Scripts have them as texts of the form
// "{01234567-89AB-CDEF-0123-456789ABCDEF}", plug-ins as 16 bytes.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_guid.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

#include <cstdint>
#include <random>
#include <string>

namespace headless::functions {
namespace {

/// Marked as a random one.
chunk::Guid random_guid() {
    static thread_local std::random_device source;
    chunk::Guid guid;
    for (std::uint8_t& byte : guid.bytes)
        byte = static_cast<std::uint8_t>(source() & 0xFFU);
    guid.bytes[6] = static_cast<std::uint8_t>((guid.bytes[6] & 0x0FU) | 0x40U);
    guid.bytes[8] = static_cast<std::uint8_t>((guid.bytes[8] & 0x3FU) | 0x80U);
    return guid;
}

/// None for a text that is no identifier.
chunk::Guid parse(const char* text) {
    return chunk::guid_of(workstation::to_string(text)).value_or(chunk::Guid());
}

void make_guid(void* guid) {
    if (guid)
        put_c_guid(random_guid(), guid);
}

void make_guid_text(char* guid, int guid_size) {
    workstation::copy_text(text_of(random_guid()), guid, guid_size);
}

void guid_to_text(const void* guid, char* text) {
    constexpr int text_bytes = 64;
    workstation::copy_text(text_of(guid ? guid_from_c(guid) : chunk::Guid()), text, text_bytes);
}

void guid_to_text_for_scripts(const char* guid, char* text, int text_size) {
    workstation::copy_text(text_of(parse(guid)), text, text_size);
}

void text_to_guid(const char* text, void* guid) {
    if (guid)
        put_c_guid(parse(text), guid);
}

} // namespace

std::span<const workstation::HostFunction> guid_functions() {
    static const workstation::HostFunction table[] = {
        {"genGuid",
         host_function<make_guid, make_guid_text>("gGUIDOut,gGUIDOut_sz", "A new identifier, as text")},
        {"guidToString", host_function<guid_to_text, guid_to_text_for_scripts>(
                             "gGUID,destOut,destOut_sz", "The identifier's text in its usual form")},
        {"stringToGuid",
         host_function<text_to_guid, guid_to_text_for_scripts>(
             "str,gGUIDOut,gGUIDOut_sz", "The identifier; all zeros for a text that is none")},
    };
    return table;
}

} // namespace headless::functions
