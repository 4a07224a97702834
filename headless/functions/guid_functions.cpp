// Host functions that make the identifiers of objects and convert them. Scripts have them as texts of the form
// "{01234567-89AB-CDEF-0123-456789ABCDEF}", plug-ins as 16 bytes.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <random>
#include <string>
#include <string_view>

namespace headless::functions {
namespace {

using Guid = std::array<std::uint8_t, 16>;

/// The bytes in the order of the text: the first three groups are numbers, kept with the lowest byte first.
constexpr std::array<std::size_t, 16> text_order{3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};

bool is_behind_group(std::size_t index) { return index == 4 || index == 6 || index == 8 || index == 10; }

std::string text_of(const Guid& guid) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "{";
    for (std::size_t i = 0; i < guid.size(); ++i) {
        const std::uint8_t byte = guid[text_order[i]];
        text += is_behind_group(i) ? "-" : "";
        text += digits[byte >> 4U];
        text += digits[byte & 0xFU];
    }
    return text + '}';
}

/// Without a valid text all bytes are 0.
Guid parse(std::string_view text) {
    Guid guid{};
    if (text.starts_with('{'))
        text.remove_prefix(1);
    for (std::size_t i = 0; i < guid.size(); ++i) {
        if (is_behind_group(i) && text.starts_with('-'))
            text.remove_prefix(1);
        const char* end = text.data() + std::min<std::size_t>(2, text.size());
        const auto parsed = std::from_chars(text.data(), end, guid[text_order[i]], 16);
        if (parsed.ec != std::errc() || parsed.ptr != text.data() + 2)
            return {};
        text.remove_prefix(2);
    }
    return guid;
}

/// Marked as a random one.
Guid random_guid() {
    static thread_local std::random_device source;
    Guid guid{};
    for (std::uint8_t& byte : guid)
        byte = static_cast<std::uint8_t>(source() & 0xFFU);
    guid[7] = static_cast<std::uint8_t>((guid[7] & 0x0FU) | 0x40U);
    guid[8] = static_cast<std::uint8_t>((guid[8] & 0x3FU) | 0x80U);
    return guid;
}

void make_guid(void* guid) {
    if (const Guid made = random_guid(); guid)
        std::memcpy(guid, made.data(), made.size());
}

void make_guid_text(char* guid, int guid_size) {
    workstation::copy_text(text_of(random_guid()), guid, guid_size);
}

void guid_to_text(const void* guid, char* text) {
    Guid bytes{};
    if (guid)
        std::memcpy(bytes.data(), guid, bytes.size());
    constexpr int text_bytes = 64;
    workstation::copy_text(text_of(bytes), text, text_bytes);
}

void guid_to_text_for_scripts(const char* guid, char* text, int text_size) {
    workstation::copy_text(text_of(parse(workstation::to_string(guid))), text, text_size);
}

void text_to_guid(const char* text, void* guid) {
    if (const Guid parsed = parse(workstation::to_string(text)); guid)
        std::memcpy(guid, parsed.data(), parsed.size());
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
