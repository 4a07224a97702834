#include "headless/chunk/output.hpp"

namespace headless::chunk {

void Output::line(const Text& line) {
    constexpr std::size_t piece_bytes = std::size_t{1} << 20U;
    if (!is_at_line_start_) // the last line of a file may lack its end
        text_ += layout_.line_end;
    is_at_line_start_ = true;
    if (line.has_layout() && layout_.is_file) {
        text_ += line.bytes();
        is_at_line_start_ = line.bytes().ends_with('\n');
    } else {
        const std::string_view content = line.content();
        if (layout_.is_file && !content.empty())
            text_.append(2 * depth_, ' ');
        text_.append(content).append(layout_.line_end);
    }
    if (text_.size() >= piece_bytes)
        flush();
}

void Output::begin_block(const Text& head) {
    line(head);
    ++depth_;
}

void Output::end_block(const Text& end) {
    --depth_;
    line(end);
}

void Output::copy(const Node& node) {
    if (node.line())
        line(*node.line());
    else if (node.block())
        copy(*node.block());
}

void Output::copy(const Block& block) {
    begin_block(block.head);
    for (const Node& node : block.lines)
        copy(node);
    end_block(block.end);
}

void Output::flush() {
    sink_(text_);
    text_.clear();
}

} // namespace headless::chunk
