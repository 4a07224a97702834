// The reference as plain text and as Markdown.

#include "headless/reference/forms.hpp"
#include "headless/reference/sections.hpp"

namespace headless::reference {
std::string text_form(const Catalogue& catalogue) {
    std::string text = title_of(catalogue) + "\n";
    for (const Section& section : sections) {
        const std::string title = title_of(section, catalogue);
        text.append("\n").append(title).append("\n").append(title.size(), '=');
        text.append("\n").append(section.introduction).append("\n");
        for (const CatalogueEntry& entry : catalogue.*section.entries) {
            const bool is_record = section.entries == &Catalogue::records;
            text.append("\n").append(is_record ? entry.name + ": " : "").append(section.line(entry));
            text.append("\n    ").append(help_in(section, catalogue, entry)).append("\n");
        }
    }
    return text;
}

std::string markdown_form(const Catalogue& catalogue) {
    std::string text = "# " + title_of(catalogue) + "\n";
    for (const Section& section : sections) {
        text.append("\n## ").append(title_of(section, catalogue)).append("\n\n").append(section.introduction);
        text.append("\n");
        for (const CatalogueEntry& entry : catalogue.*section.entries) {
            text.append("\n### ").append(entry.name).append("\n\n    ").append(section.line(entry));
            text.append("\n\n").append(help_in(section, catalogue, entry)).append("\n");
        }
    }
    return text;
}

} // namespace headless::reference
