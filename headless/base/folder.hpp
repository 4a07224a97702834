#pragma once
// The folder that contains a file.

#include "headless/base/failure.hpp"

#include <filesystem>

namespace headless {

/// The folder that contains a file of this path; "." for a bare name.
std::filesystem::path folder_of(const std::filesystem::path& file);

/// Syncs the folder: on return, files created, renamed and removed in it survive a power cut. Fails, naming
/// the folder.
Result<void> flush_folder(const std::filesystem::path& folder);

} // namespace headless
