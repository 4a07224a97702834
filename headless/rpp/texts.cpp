#include "headless/rpp/texts.hpp"

#include "headless/rpp/forms.hpp"
#include "headless/rpp/properties.hpp"

#include <algorithm>
#include <cstddef>

namespace headless::rpp {
namespace {

using chunk::Block;
using chunk::Lines;
using chunk::Node;
using chunk::Text;

constexpr std::string_view texts_token = "EXT";
constexpr std::string_view notes_token = "NOTES";

const Lines no_lines;

const Lines& lines_of(const project::Take& take) { return take.lines; }
template <class T>
const Lines& lines_of(const T& object) {
    return object.block ? object.block->lines : no_lines;
}

bool has_key(const Node& node, std::string_view key) {
    if (!node.line())
        return false;
    const auto word = chunk::word(node.line()->content(), 0);
    return word && word->text == key;
}

std::optional<std::string> find_text(const Lines& lines, std::string_view key) {
    const Block* texts = chunk::find_block(lines, texts_token);
    if (!texts)
        return std::nullopt;
    const auto line =
        std::ranges::find_if(texts->lines, [&](const Node& node) { return has_key(node, key); });
    if (line == texts->lines.end())
        return std::nullopt;
    return std::string(chunk::text_at(*line->line(), 1));
}

bool fits(std::string_view text) { return chunk::on_one_line(text) == text && !chunk::has_all_quotes(text); }

// Keys that would read as something else than a line's first word.
bool is_key(std::string_view key) {
    return !key.empty() && fits(key) && !key.starts_with('<') && !key.starts_with('>') &&
           !key.starts_with('|');
}

void change(Lines& lines, std::string_view key, std::string_view text) {
    const auto line = std::ranges::find_if(lines, [&](const Node& node) { return has_key(node, key); });
    const std::string wanted = chunk::as_word(key) + " " + chunk::in_quotes(text);
    if (text.empty() && line != lines.end())
        lines.erase(line);
    else if (!text.empty() && line != lines.end())
        line->line()->replace(0, line->line()->content().size(), wanted);
    else if (!text.empty())
        lines.emplace_back(Text::made(wanted));
}

template <class T, class Insert>
bool set_text_in(T& object, Lines& lines, std::string_view key, std::string_view text, Insert insert_block) {
    if (!is_key(key) || !fits(text))
        return false;
    if (find_text(lines, key).value_or("") == text)
        return true;
    if (!chunk::find_block(lines, texts_token))
        insert_block(object, Block{Text::literal("<EXT"), {}});
    Block& texts = *chunk::find_block(lines, texts_token);
    change(texts.lines, key, text);
    if (texts.lines.empty())
        chunk::erase(lines, texts_token);
    return true;
}

template <class T>
void insert_among_forms(T& object, Node node) {
    insert(object, std::move(node));
}

} // namespace

std::optional<std::string> script_text(const project::Track& track, std::string_view key) {
    return find_text(lines_of(track), key);
}
std::optional<std::string> script_text(const project::Item& item, std::string_view key) {
    return find_text(lines_of(item), key);
}
std::optional<std::string> script_text(const project::Take& take, std::string_view key) {
    return find_text(lines_of(take), key);
}
std::optional<std::string> script_text(const project::Envelope& envelope, std::string_view key) {
    return find_text(lines_of(envelope), key);
}

bool set_script_text(project::Track& track, std::string_view key, std::string_view text) {
    give_lines(track);
    return set_text_in(track, track.block->lines, key, text, insert_among_forms<project::Track>);
}

bool set_script_text(project::Item& item, std::string_view key, std::string_view text) {
    give_lines(item);
    return set_text_in(item, item.block->lines, key, text, insert_among_forms<project::Item>);
}

bool set_script_text(project::Take& take, std::string_view key, std::string_view text) {
    give_lines(take);
    return set_text_in(take, take.lines, key, text, insert_among_forms<project::Take>);
}

bool set_script_text(project::Envelope& envelope, std::string_view key, std::string_view text) {
    const auto insert_block = [](project::Envelope& object, Node node) {
        Lines& lines = object.block->lines;
        const std::size_t place = place_for(lines, envelope_forms, node.token());
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(place), std::move(node));
    };
    return set_text_in(envelope, envelope.block->lines, key, text, insert_block);
}

std::string notes_of(const project::Item& item) {
    const Block* notes = chunk::find_block(lines_of(item), notes_token);
    std::string text;
    if (!notes)
        return text;
    for (const Node& node : notes->lines) {
        if (!node.line())
            continue;
        std::string_view line = node.line()->content();
        line.remove_prefix(line.starts_with('|') ? 1 : 0);
        if (&node != &notes->lines.front())
            text += '\n';
        text += line;
    }
    return text;
}

void set_notes(project::Item& item, std::string_view notes) {
    if (notes_of(item) == notes)
        return;
    give_lines(item);
    Lines& lines = item.block->lines;
    if (notes.empty()) {
        chunk::erase(lines, notes_token);
        return;
    }
    if (!chunk::find_block(lines, notes_token))
        insert(item, Block{Text::literal("<NOTES"), {}});
    Lines& written = chunk::find_block(lines, notes_token)->lines;
    written.clear();
    for (std::size_t begin = 0; begin <= notes.size();) {
        const std::size_t end = std::min(notes.find('\n', begin), notes.size());
        std::string_view line = notes.substr(begin, end - begin);
        line.remove_suffix(line.ends_with('\r') ? 1 : 0);
        written.emplace_back(Text::made("|" + chunk::on_one_line(line)));
        begin = end + 1;
    }
}

} // namespace headless::rpp
