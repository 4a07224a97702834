#pragma once
// Reads the text of a project file, or of an object in the same form, into lines and blocks.

#include "headless/base/failure.hpp"
#include "headless/chunk/lines.hpp"

#include <string_view>

namespace headless::chunk {

/// A file's outermost block, and what lies around it.
struct Document {
    bool has_byte_order_mark = false;
    Lines before;
    Block root;
    Lines after;
    bool is_cut_off = false; ///< the file ended within a block
};

/// Reads a file. One that ends within a block is read as far as it goes. Fails with the number of the line at
/// fault if there is no block, or if blocks are nested too deeply.
/// @param text must outlive the document: its lines refer to it
Result<Document> parse_file(std::string_view text);

/// Reads the block that a script gives for an object. Fails also if the block never ends. The result has its own copies of the lines.
Result<Block> parse_block(std::string_view text);

} // namespace headless::chunk
