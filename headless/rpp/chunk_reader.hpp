#pragma once
// Reads the syntax of the project file: one line after the other, entering or skipping blocks. For use inside
// this folder.

#include "headless/base/failure.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace headless::rpp {

/// Walks through a text block by block. The first failure ends the walk: `next` returns false from then on.
class ChunkReader {
public:
    /// @param text must outlive the reader
    explicit ChunkReader(std::string_view text) : rest_(text) {}

    /// Goes to the next line of the block that was entered last. A block that begins there is skipped unless
    /// it is entered. Returns false at the end of the block, and leaves the block.
    bool next();

    /// Enters the block that begins at the current line.
    void enter() { begins_block_ = false; }

    /// The first word of the current line, without the `<` of a block.
    std::string_view name() const { return name_; }
    bool begins_block() const { return begins_block_; }

    /// The current line without its indent.
    std::string_view line() const { return line_; }

    /// The words after the name, counted from 0; `otherwise` if the line has fewer.
    std::string text(std::size_t place, std::string_view otherwise = {}) const;

    /// As `text`. A word that is not a finite number is a failure.
    double number(std::size_t place, double otherwise);

    /// As `number`, truncated to a whole number and limited to the range of int.
    int integer(std::size_t place, int otherwise);
    bool flag(std::size_t place, bool otherwise) { return integer(place, otherwise ? 1 : 0) != 0; }

    /// Keeps the first failure, with the current line's number.
    void fail(std::string_view reason);
    const std::optional<Failure>& failure() const { return failure_; }

private:
    bool next_line();
    void skip_block();
    void split(std::string_view line);

    std::string_view rest_;
    std::size_t line_number_ = 0;
    std::size_t depth_ = 0;
    bool begins_block_ = false;
    bool ends_block_ = false;
    std::string_view line_;
    std::string name_;
    std::vector<std::string> words_;
    std::optional<Failure> failure_;
};

} // namespace headless::rpp
