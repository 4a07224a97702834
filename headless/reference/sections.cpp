#include "headless/reference/sections.hpp"

namespace headless::reference {

std::string title_of(const Catalogue& catalogue) {
    return "Reference of MERIDEK_FELSPAR " + catalogue.version;
}

std::string title_of(const Section& section, const Catalogue& catalogue) {
    return std::string(section.title) + " (" + std::to_string((catalogue.*section.entries).size()) + ')';
}

std::string help_in(const Section& section, const Catalogue& catalogue, const CatalogueEntry& entry) {
    const bool is_documentation_only =
        section.entries == &Catalogue::registered && catalogue.is_of_lua_module(entry.name);
    return help_of(entry.definition) + (is_documentation_only ? ". Works once the Lua module is loaded" : "");
}

} // namespace headless::reference
