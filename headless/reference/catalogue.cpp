#include "headless/reference/catalogue.hpp"

#include "headless/script/number_array.hpp"
#include "headless/script/script_runner.hpp"
#include "headless/workstation/plugin_library.hpp"
#include "headless/workstation/workstation.hpp"

#include <algorithm>

namespace headless::reference {
namespace {

/// The form in which the plug-in exports its tables: terminated by a pair of nulls.
struct ReferenceRow {
    const char* name;
    const char* definition; ///< null: as for the registered function of that name
};

const CatalogueEntry* find(const std::vector<CatalogueEntry>& entries, const std::string& name) {
    const auto found = std::ranges::find(entries, name, &CatalogueEntry::name);
    return found == entries.end() ? nullptr : &*found;
}

std::vector<CatalogueEntry> read_table(const workstation::PluginLibrary& library, const char* symbol,
                                       const std::vector<CatalogueEntry>& registered) {
    std::vector<CatalogueEntry> entries;
    const auto* row = static_cast<const ReferenceRow*>(library.symbol(symbol));
    for (; row && row->name; ++row)
        if (row->definition)
            entries.push_back({row->name, script::parse_definition(row->definition)});
        else if (const CatalogueEntry* same = find(registered, row->name))
            entries.push_back(*same);
    return entries;
}

void append(std::vector<CatalogueEntry>& entries, std::span<const script::LuaFunction> functions) {
    for (const script::LuaFunction& function : functions)
        entries.push_back({function.name, script::parse_definition(function.definition)});
}

} // namespace

bool Catalogue::is_of_lua_module(const std::string& name) const { return find(lua, name) != nullptr; }

Catalogue read_catalogue(const workstation::Workstation& workstation,
                         const workstation::PluginLibrary& library) {
    Catalogue catalogue;
    if (const auto* version = static_cast<const char*>(library.symbol("felspar_version")))
        catalogue.version = version;
    for (const workstation::ScriptFunction& function : workstation.script_functions()) {
        auto& group = function.is_registered ? catalogue.registered : catalogue.workstation;
        group.push_back({function.name, script::parse_definition(function.definition)});
    }
    catalogue.lua = read_table(library, "felspar_lua_functions", catalogue.registered);
    catalogue.python = read_table(library, "felspar_python_functions", catalogue.registered);
    catalogue.records = read_table(library, "felspar_records", catalogue.registered);
    for (const auto functions : script::functions_for_lua())
        append(catalogue.scripting, functions);
    append(catalogue.arrays, script::number_array_methods());
    return catalogue;
}

} // namespace headless::reference
