#pragma once
// Where programs keep a user's settings, by the rules of each platform.

#include <filesystem>
#include <functional>
#include <string>

namespace headless {

enum class Platform { gnu_linux, macos, windows };

/// The platform that this program was built for.
Platform this_platform();

/// Gives the value of a variable of the environment, empty if it is not set.
using Environment = std::function<std::string(const char* name)>;

/// The environment of this process.
std::string process_environment(const char* name);

/// The folder in which each program has a folder of its own. Empty if the environment does not tell.
std::filesystem::path configuration_folder(Platform platform, const Environment& environment);

} // namespace headless
