#pragma once
// Values by section and key in a text file of lines `[section]` and `key=value`.

#include "headless/base/failure.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace headless {

/// Section and key are compared without regard to case, blanks around both and around the value are dropped.
/// Empty if the text has no such key.
std::optional<std::string> ini_value(std::string_view text, std::string_view section, std::string_view key);

/// The text with the value set, all other lines as they were. Without a value the key is removed. A new key
/// goes to the end of its section, a new section to the end of the text.
std::string with_ini_value(std::string_view text, std::string_view section, std::string_view key,
                           std::optional<std::string_view> value);

} // namespace headless
