#pragma once
// Binary values in the lines of a project file, as RFC 4648 defines base64.

#include <optional>
#include <string>
#include <string_view>

namespace headless::chunk {

std::string to_base64(std::string_view bytes);

/// Empty for a text that is not base64.
std::optional<std::string> from_base64(std::string_view text);

} // namespace headless::chunk
