#pragma once
// Names in the file. A name that its line cannot hold follows in a block of the same token, after a bar.

#include "headless/chunk/output.hpp"

#include <string>
#include <string_view>

namespace headless::rpp {

/// The name that the lines hold, empty if they hold none.
std::string read_name(const chunk::Lines& lines);

/// Writes the line of a name, and the block if it needs one.
/// @param line  what stands there now
void write_name(chunk::Output& out, const chunk::Text& line, const std::string& name);

} // namespace headless::rpp
