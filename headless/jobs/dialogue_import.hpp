#pragma once
// The plug-in's dialogue import. It is called as scripts call it, through the plug-in's Lua module: Lua
// strings carry file names in any encoding, and the module is found by a C name.

#include "headless/workstation/plugin_library.hpp"

#include <filesystem>
#include <string>
#include <vector>

namespace headless::jobs {

/// The arguments of the plug-in's operation.
struct DialogueImport {
    std::filesystem::path subject;
    std::filesystem::path base;
    double start_seconds = 0.0;
    double interval_seconds = 0.0;
    bool counts_from_end = false;
    bool match = false;
    bool ride = false;
    int ratio = 0;
    const std::vector<std::string>& groups;
};

/// Whether the library has the Lua module. Must be true before `run_dialogue_import` is called.
bool offers_dialogue_import(const workstation::PluginLibrary& plugin);

/// Imports into the project of the current workstation.
/// @returns whether the operation ran to its end; if it did not, memory ran out or a folder could not be
/// read, and what it did until then stays in the project
bool run_dialogue_import(const workstation::PluginLibrary& plugin, const DialogueImport& import);

} // namespace headless::jobs
