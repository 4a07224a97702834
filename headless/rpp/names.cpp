#include "headless/rpp/names.hpp"

namespace headless::rpp {

std::string read_name(const chunk::Lines& lines) {
    std::string name;
    if (const chunk::Text* line = chunk::find_line(lines, "NAME"))
        name = chunk::text_at(*line, 1);
    if (const chunk::Block* block = chunk::find_block(lines, "NAME")) {
        bool is_first = true;
        for (const chunk::Node& node : block->lines) {
            if (!node.line() || !node.line()->content().starts_with('|'))
                continue;
            name = is_first ? "" : std::move(name) + '\n';
            name += node.line()->content().substr(1);
            is_first = false;
        }
    }
    return name;
}

void write_name(chunk::Output& out, const chunk::Text& line, const std::string& name) {
    chunk::Text edited = line;
    chunk::set_word(edited, 1, chunk::in_form_of(line, 1, name));
    out.line(edited);
    if (chunk::has_all_quotes(name)) {
        out.begin_block(chunk::Text::literal("<NAME"));
        out.line(chunk::Text::made("|" + chunk::on_one_line(name)));
        out.end_block(chunk::Text::literal(">"));
    }
}

} // namespace headless::rpp
