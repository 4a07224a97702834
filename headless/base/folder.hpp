#pragma once
// The folder around a file, and its place on the disk.

#include "headless/base/failure.hpp"

#include <filesystem>

namespace headless {

/// The folder that contains a file of this path; "." for a bare name.
std::filesystem::path folder_of(const std::filesystem::path& file);

/// Returns when names given and removed in the folder would survive a power cut.
Result<void> flush_folder(const std::filesystem::path& folder);

} // namespace headless
