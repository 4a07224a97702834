#pragma once
// The project file's syntax, read: one line after the other, blocks entered or skipped. For use inside this
// folder.

#include "headless/base/failure.hpp"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace headless::rpp {

/// Walks through a text block by block. The first failure ends the walk: `next` gives false from then on.
class ChunkReader {
public:
    /// @param text must outlive the reader
    explicit ChunkReader(std::string_view text) : rest_(text) {}

    /// Goes to the next line of the block that was entered last; a block that begins there and is not entered
    /// is skipped whole. False at the end of the block, which is left by that.
    bool next();

    /// Goes into the block that begins at the present line.
    void enter() { begins_block_ = false; }

    /// The first word of the present line, without the `<` of a block.
    std::string_view name() const { return name_; }
    bool begins_block() const { return begins_block_; }

    /// The words behind the name, counted from 0; `otherwise` when the line has fewer.
    std::string text(std::size_t place, std::string_view otherwise = {}) const;

    /// As `text`; a word that is no finite number is a failure.
    double number(std::size_t place, double otherwise);

    /// As `number`, cut to a whole number within int.
    int integer(std::size_t place, int otherwise);
    bool flag(std::size_t place, bool otherwise) { return integer(place, otherwise ? 1 : 0) != 0; }

    /// Keeps the first failure, with the present line's number.
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
    std::string name_;
    std::vector<std::string> words_;
    std::optional<Failure> failure_;
};

} // namespace headless::rpp
