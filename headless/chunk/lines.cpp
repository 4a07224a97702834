#include "headless/chunk/lines.hpp"

#include <algorithm>
#include <utility>

namespace headless::chunk {
namespace {

template <class Wanted, class Nodes, class Access>
Wanted* find(Nodes& lines, std::string_view token, Access access) {
    for (auto& node : lines)
        if (Wanted* found = access(node); found && node.token() == token)
            return found;
    return nullptr;
}

} // namespace

Node::Node(Block block) : content_(std::make_unique<Block>(std::move(block))) {}

Node::Node(const Node& other) : content_(Place{}) {
    if (const Block* block = other.block())
        content_ = std::make_unique<Block>(*block);
    else if (const Text* line = other.line())
        content_ = *line;
    else
        content_ = *other.place();
}

Node& Node::operator=(const Node& other) { return *this = Node(other); }

Node::~Node() = default;

const Block* Node::block() const {
    const auto* block = std::get_if<std::unique_ptr<Block>>(&content_);
    return block ? block->get() : nullptr;
}

Block* Node::block() {
    auto* block = std::get_if<std::unique_ptr<Block>>(&content_);
    return block ? block->get() : nullptr;
}

std::string_view Node::token() const {
    if (const Text* text = line())
        return chunk::token(text->content());
    const Block* present = block();
    return present ? chunk::token(present->head.content()) : std::string_view{};
}

const Text* find_line(const Lines& lines, std::string_view token) {
    return find<const Text>(lines, token, [](const Node& node) { return node.line(); });
}

Text* find_line(Lines& lines, std::string_view token) {
    return find<Text>(lines, token, [](Node& node) { return node.line(); });
}

const Block* find_block(const Lines& lines, std::string_view token) {
    return find<const Block>(lines, token, [](const Node& node) { return node.block(); });
}

Block* find_block(Lines& lines, std::string_view token) {
    return find<Block>(lines, token, [](Node& node) { return node.block(); });
}

void erase(Lines& lines, std::string_view token) {
    std::erase_if(lines, [&](const Node& node) { return node.token() == token; });
}

std::string_view text_at(const Text& line, std::size_t number, std::string_view otherwise) {
    const auto found = word(line.content(), number);
    return found ? found->text : otherwise;
}

double number_at(const Text& line, std::size_t number, double otherwise) {
    const auto found = word(line.content(), number);
    return found ? chunk::number(found->text).value_or(otherwise) : otherwise;
}

std::string in_form_of(const Text& line, std::size_t number, std::string_view text) {
    const auto present = word(line.content(), number);
    const bool is_bare = present && present->end - present->begin == present->text.size();
    return is_bare ? as_word(text) : in_quotes(text);
}

void set_word(Text& line, std::size_t number, std::string_view wanted, std::string_view defaults) {
    if (const auto present = word(line.content(), number)) {
        line.replace(present->begin, present->end - present->begin, wanted);
        return;
    }
    std::string added;
    std::size_t count = 0;
    std::size_t end = 0;
    Words words(line.content());
    for (auto present = words.next(); present; present = words.next(), ++count)
        end = present->end;
    for (; count < number; ++count) {
        const auto by_default = word(defaults, count);
        added.append(" ").append(
            by_default ? defaults.substr(by_default->begin, by_default->end - by_default->begin) : "0");
    }
    line.replace(end, 0, added.append(" ").append(wanted));
}

} // namespace headless::chunk
