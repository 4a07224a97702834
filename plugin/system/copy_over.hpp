#pragma once
// Copies of files that replace others.

#include <filesystem>

/// Copies a file and replaces another of that name.
/// @throws std::filesystem::filesystem_error, also for a pipe or a device
void copy_over(const std::filesystem::path& from, const std::filesystem::path& to);
