#pragma once
// Where the command finds the plug-in, and the option by which users say so.

#include "headless/base/failure.hpp"
#include "headless/host/plugin_library.hpp"

#include <filesystem>

namespace CLI {
class App;
}

namespace headless {

/// Adds the option --plugin, which sets `given`.
void add_plugin_option(CLI::App& command, std::filesystem::path& given);

/// The plug-in's library: `given` unless that is empty, else seen from the folder of the running program:
/// ../lib/felspar/ as installed, ../lib/ as built. @returns a failure that names both places when it is in
/// neither
Result<std::filesystem::path> find_plugin(const std::filesystem::path& given);

/// Finds the library and loads it into the living workstation.
Result<PluginLibrary> load_plugin(const std::filesystem::path& given, Workstation& workstation);

} // namespace headless
