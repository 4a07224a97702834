// The reference as one self-contained page.

#include "headless/reference/forms.hpp"
#include "headless/reference/sections.hpp"

namespace headless::reference {
namespace {

constexpr std::string_view head = R"(<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width">
<title>MERIDEK_FELSPAR: reference</title>
<style>
body { font: 16px/1.5 sans-serif; max-width: 60rem; margin: 2rem auto; padding: 0 1rem; }
input { font: inherit; width: 100%; padding: .4rem; box-sizing: border-box; position: sticky; top: .5rem; }
article { border-top: 1px solid #ccc; padding: .6rem 0; }
h3, p { margin: .2rem 0; }
pre { white-space: pre-wrap; background: #f3f3f3; padding: .4rem .6rem; margin: .3rem 0; }
@media (prefers-color-scheme: dark) { body { background: #181818; color: #ddd; } pre { background: #262626; } a { color: #8bf; } }
</style>
)";

constexpr std::string_view foot = R"(<script>
const articles = [...document.querySelectorAll("article")];
document.querySelector("input").oninput = event => {
  const words = event.target.value.toLowerCase().split(/\s+/);
  for (const article of articles)
    article.hidden = !words.every(word => article.textContent.toLowerCase().includes(word));
};
</script>
</html>
)";

std::string escaped(std::string_view text) {
    std::string html;
    for (const char letter : text) {
        switch (letter) {
        case '<':
            html += "&lt;";
            break;
        case '>':
            html += "&gt;";
            break;
        case '&':
            html += "&amp;";
            break;
        case '"':
            html += "&quot;";
            break;
        default:
            html += letter;
        }
    }
    return html;
}

/// Names occur in more than one section, so anchors contain both section and name.
std::string anchor_of(std::size_t section, const CatalogueEntry* entry = nullptr) {
    return std::to_string(section + 1) + (entry ? '-' + entry->name : "");
}

std::string article(std::size_t index, const Catalogue& catalogue, const CatalogueEntry& entry) {
    const Section& section = sections[index];
    const std::string anchor = anchor_of(index, &entry);
    return "<article id=\"" + anchor + "\"><h3><a href=\"#" + anchor + "\">" + escaped(entry.name) +
           "</a></h3><pre>" + escaped(section.line(entry)) + "</pre><p>" +
           escaped(help_in(section, catalogue, entry)) + "</p></article>\n";
}

} // namespace

std::string html_form(const Catalogue& catalogue) {
    std::string html(head);
    html += "<h1>" + escaped(title_of(catalogue)) + "</h1>\n<ul>\n";
    for (std::size_t i = 0; i < sections.size(); ++i)
        html += "<li><a href=\"#" + anchor_of(i) + "\">" + title_of(sections[i], catalogue) + "</a></li>\n";
    html += "</ul>\n<input type=\"search\" placeholder=\"Search\" aria-label=\"Search\">\n";
    for (std::size_t i = 0; i < sections.size(); ++i) {
        html += "<h2 id=\"" + anchor_of(i) + "\">" + title_of(sections[i], catalogue) + "</h2>\n<p>" +
                escaped(sections[i].introduction) + "</p>\n";
        for (const CatalogueEntry& entry : catalogue.*sections[i].entries)
            html += article(i, catalogue, entry);
    }
    return html.append(foot);
}

} // namespace headless::reference
