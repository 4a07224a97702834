#pragma once
// Where the command finds the plug-in.

#include "headless/base/failure.hpp"

#include <filesystem>

namespace headless {

/// The plug-in's library: `given` unless that is empty, else seen from the folder of the running program:
/// ../lib/felspar/ as installed, ../lib/ as built. @returns a failure that names both places when it is in
/// neither
Result<std::filesystem::path> find_plugin(const std::filesystem::path& given);

} // namespace headless
