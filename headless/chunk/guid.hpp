#pragma once
// The identifiers of objects, "{8F6C0B3E-1D52-4A77-9C1B-2E5D7A90C413}".

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace headless::chunk {

/// All zero is none.
struct Guid {
    std::array<std::uint8_t, 16> bytes{}; ///< in the order of the text

    explicit operator bool() const { return *this != Guid{}; }
    bool operator==(const Guid&) const = default;
};

/// Empty for a text that is not of this form. Letters may be small.
std::optional<Guid> guid_of(std::string_view text);

/// In capitals, with braces.
std::string text_of(const Guid& guid);

/// Identifiers for what this program makes: the same steps always give the same ones. Numbers that a project
/// brings along are passed over.
class GuidSource {
public:
    Guid next();

    /// Never gives this identifier, nor any that came before it.
    void pass_over(const Guid& guid);

private:
    std::uint32_t last_ = 0;
};

/// Whether a GuidSource gave this identifier.
bool is_own(const Guid& guid);

} // namespace headless::chunk
