#pragma once
// Texts written to files, whole or not at all.

#include "headless/base/failure.hpp"

#include <filesystem>
#include <string_view>

namespace headless {

/// Replaces what is there. A failure names the path and leaves what was there.
Result<void> write_text_file(const std::filesystem::path& file, std::string_view text);

} // namespace headless
