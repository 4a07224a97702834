#pragma once
// Shared libraries that are loaded while the program runs.

#include <filesystem>
#include <string>
#include <string_view>

namespace headless::system {

/// What the names of shared libraries end in: ".so", ".dylib" or ".dll".
std::string_view library_suffix();

/// @param file    an absolute path; others would be searched for in the system's folders
/// @param reason  receives why it cannot be loaded
/// @returns null if it cannot be loaded
void* load_library(const std::filesystem::path& file, std::string& reason);

/// @returns null if the library exports no such name
void* symbol_of(void* library, const char* name);

void unload_library(void* library);

} // namespace headless::system
