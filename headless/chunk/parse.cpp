#include "headless/chunk/parse.hpp"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace headless::chunk {
namespace {

Failure failure_at(std::size_t line_number, std::string_view reason) {
    return {"line " + std::to_string(line_number) + ": " + std::string(reason)};
}

// Blocks are written, copied and destroyed recursively.
constexpr std::size_t max_depth = 5000;

// Keeps the open blocks in a list instead of recursing.
template <class MakeText>
Result<Document> parse(std::string_view rest, MakeText make_text) {
    Document document;
    std::vector<Block> open;
    bool has_root = false;
    std::size_t line_number = 0;
    while (!rest.empty()) {
        const std::size_t length = std::min(rest.find('\n'), rest.size() - 1) + 1;
        Text line = make_text(rest.substr(0, length));
        rest.remove_prefix(length);
        ++line_number;
        if (length > std::numeric_limits<std::uint32_t>::max())
            return tl::unexpected(failure_at(line_number, "is too long"));
        const std::string_view content = line.content();
        if (content.starts_with('<')) {
            if (open.empty() && has_root)
                return tl::unexpected(failure_at(line_number, "another block begins after the project"));
            if (open.size() == max_depth)
                return tl::unexpected(failure_at(line_number, "blocks are nested too deeply"));
            has_root = true;
            open.push_back({std::move(line), {}});
        } else if (content.starts_with('>') && content.find_first_not_of(" \t", 1) == content.npos) {
            if (open.empty())
                return tl::unexpected(failure_at(line_number, "'>' ends a block that never began"));
            Block ended = std::move(open.back());
            open.pop_back();
            ended.end = std::move(line);
            ended.lines.shrink_to_fit();
            if (open.empty())
                document.root = std::move(ended);
            else
                open.back().lines.emplace_back(std::move(ended));
        } else {
            Lines& lines = !open.empty() ? open.back().lines : has_root ? document.after : document.before;
            lines.emplace_back(std::move(line));
        }
    }
    document.is_cut_off = !open.empty();
    for (; !open.empty(); open.pop_back())
        if (open.size() == 1)
            document.root = std::move(open.back());
        else
            open[open.size() - 2].lines.emplace_back(std::move(open.back()));
    if (!has_root)
        return tl::unexpected(failure_at(line_number, "there is no block"));
    return document;
}

} // namespace

Result<Document> parse_file(std::string_view text) {
    const bool is_marked = text.starts_with(byte_order_mark);
    text.remove_prefix(is_marked ? byte_order_mark.size() : 0);
    return parse(text, Text::in_file).map([&](Document&& document) {
        document.has_byte_order_mark = is_marked;
        return std::move(document);
    });
}

Result<Block> parse_block(std::string_view text) {
    auto document =
        parse(text, [](std::string_view bytes) { return Text::made(Text::in_file(bytes).content()); });
    if (document && document->is_cut_off)
        return tl::unexpected(Failure{"the text ends within a block"});
    return std::move(document).map([](Document&& whole) { return std::move(whole.root); });
}

} // namespace headless::chunk
