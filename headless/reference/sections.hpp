#pragma once
// The order of the groups of functions in the formats for reading.

#include "headless/reference/calls.hpp"

#include <array>

namespace headless::reference {

struct Section {
    const char* title;
    const char* introduction;
    const std::vector<CatalogueEntry> Catalogue::*entries;
    std::string (*line)(const CatalogueEntry&); ///< how an entry is called, or what it consists of
};

constexpr std::array<Section, 7> sections{{
    {"Functions of the library", "For scripts of every language, once the library is loaded.",
     &Catalogue::registered, lua_call},
    {"Functions of the Lua module", "For Lua scripts, after require \"reaper_MERIDEK_FELSPAR\".",
     &Catalogue::lua, lua_call},
    {"Functions for Python", "Exported by the library, for ctypes.", &Catalogue::python, c_prototype},
    {"Records", "What lists hold. A field that has no value is absent.", &Catalogue::records, field_list},
    {"Functions of the workstation", "Those of the workstation's own that the headless one offers.",
     &Catalogue::workstation, lua_call},
    {"Functions of the workstation for Lua", "Lua scripts alone have these.", &Catalogue::scripting,
     lua_call},
    {"Arrays of numbers", "What reaper.new_array makes; numbers are read and written by index from 1.",
     &Catalogue::arrays, method_call},
}};

/// The title of the whole reference, with the version.
std::string title_of(const Catalogue& catalogue);

/// The title with the number of entries.
std::string title_of(const Section& section, const Catalogue& catalogue);

/// The help of an entry, with any text that the section adds to it.
std::string help_in(const Section& section, const Catalogue& catalogue, const CatalogueEntry& entry);

} // namespace headless::reference
