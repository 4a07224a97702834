#pragma once
// All functions that scripts may call, grouped by how they are reached. Read only from the definition texts
// of the workstation and of the loaded plug-in.

#include "headless/script/definition.hpp"

#include <string>
#include <vector>

namespace headless::workstation {
class PluginLibrary;
class Workstation;
} // namespace headless::workstation

namespace headless::reference {

struct CatalogueEntry {
    std::string name;
    script::ParsedDefinition definition; ///< its strings belong to the plug-in or the workstation
};

struct Catalogue {
    std::string version;                     ///< of the plug-in's release
    std::vector<CatalogueEntry> registered;  ///< with the workstation, by the plug-in
    std::vector<CatalogueEntry> lua;         ///< of the plug-in's Lua module
    std::vector<CatalogueEntry> python;      ///< exported for ctypes
    std::vector<CatalogueEntry> records;     ///< the records in lists: their fields are stored as parameters
    std::vector<CatalogueEntry> workstation; ///< the workstation's own functions for every language
    std::vector<CatalogueEntry> scripting;   ///< its functions for Lua alone
    std::vector<CatalogueEntry> arrays;      ///< the methods of its arrays of numbers

    /// Whether the Lua module has a function of that name.
    bool is_of_lua_module(const std::string& name) const;
};

/// Must not outlive the library.
Catalogue read_catalogue(const workstation::Workstation& workstation,
                         const workstation::PluginLibrary& library);

} // namespace headless::reference
