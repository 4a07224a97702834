#pragma once
// Writes lines and blocks as text.

#include "headless/chunk/lines.hpp"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace headless::chunk {

/// How the lines come out.
struct Layout {
    bool is_file = true;              ///< otherwise no line has an indent, as scripts expect it
    std::string_view line_end = "\n"; ///< of lines that bring none along
};

/// Collects text and passes it on in large pieces.
class Output {
public:
    using Sink = std::function<void(std::string_view)>;

    Output(Layout layout, Sink sink) : layout_(layout), sink_(std::move(sink)) {}
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output() = default;

    void byte_order_mark() { text_ += chunk::byte_order_mark; }
    void line(const Text& line);

    /// Between these two, lines are indented by one level more.
    void begin_block(const Text& head);
    void end_block(const Text& end);

    /// Writes a line or a block as it is. Places in it are left out.
    void copy(const Node& node);
    void copy(const Block& block);

    /// Passes on what has been collected.
    void flush();

private:
    Layout layout_;
    Sink sink_;
    std::string text_;
    std::size_t depth_ = 0;
    bool is_at_line_start_ = true;
};

} // namespace headless::chunk
