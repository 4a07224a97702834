#pragma once
// SHA-256 sums of files: they tell whether a file is still the one that was installed.

#include <string>
#include <string_view>

namespace headless::install {

/// The SHA-256 sum of the bytes, as 64 hexadecimal digits in lower case.
std::string sha256(std::string_view bytes);

} // namespace headless::install
