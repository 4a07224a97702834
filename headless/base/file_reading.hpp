#pragma once
// Reads files by system calls, so that a failed read is not mistaken for the end of the file.

#include "headless/base/failure.hpp"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace headless {

/// Returns up to `max_bytes` bytes of an open file from `position` on; fewer only at its end.
/// @param file  the name for a failure
Result<std::string> read_at(int descriptor, const std::filesystem::path& file, std::int64_t position,
                            std::size_t max_bytes);

/// Returns up to `max_bytes` bytes from the start of a file. Empty if there is no regular file: pipes and
/// devices are not opened, as they might block forever. Fails, naming the file, if it cannot be read.
Result<std::optional<std::string>> beginning_of(const std::filesystem::path& file, std::size_t max_bytes);

/// As beginning_of, of the whole file.
Result<std::optional<std::string>> text_of(const std::filesystem::path& file);

} // namespace headless
