#pragma once
// All that scripts may call, by the doors that lead to it. It is read from the definition texts of the
// workstation and of the loaded plug-in, and from nothing else.

#include "headless/script/definition.hpp"

#include <string>
#include <vector>

namespace headless {

class PluginLibrary;
class Workstation;

struct CatalogueEntry {
    std::string name;
    Definition definition; ///< its texts are the plug-in's and the workstation's
};

struct Catalogue {
    std::vector<CatalogueEntry> registered;  ///< with the workstation, by the plug-in
    std::vector<CatalogueEntry> lua;         ///< of the plug-in's Lua module
    std::vector<CatalogueEntry> python;      ///< exported for ctypes
    std::vector<CatalogueEntry> records;     ///< what lists hold: fields are parameters
    std::vector<CatalogueEntry> workstation; ///< the workstation's own functions for every language
    std::vector<CatalogueEntry> scripting;   ///< its functions for Lua alone
    std::vector<CatalogueEntry> arrays;      ///< the methods of its arrays of numbers

    /// Whether the Lua module has a function of that name.
    bool is_of_lua_module(const std::string& name) const;
};

/// Must not outlive the library.
Catalogue read_catalogue(const Workstation& workstation, const PluginLibrary& library);

} // namespace headless
