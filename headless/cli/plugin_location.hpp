#pragma once
// Finds the plug-in, and defines the option that sets its path.

#include "headless/base/failure.hpp"
#include "headless/workstation/plugin_library.hpp"

#include <filesystem>

namespace CLI {
class App;
}

namespace headless::cli {

/// Adds the option --plugin, which sets `given`.
void add_plugin_option(CLI::App& command, std::filesystem::path& given);

/// Returns the plug-in's library: `given` if that is not empty, otherwise relative to the folder of the
/// running program, ../lib/felspar/ if installed, ../lib/ if built, ../ in an archive.
/// @returns a failure that names the places if it is in none
Result<std::filesystem::path> find_plugin(const std::filesystem::path& given);

/// Finds the library and loads it into the current workstation.
Result<workstation::PluginLibrary> load_plugin(const std::filesystem::path& given,
                                               workstation::Workstation& workstation);

} // namespace headless::cli
