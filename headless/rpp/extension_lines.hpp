#pragma once
// The texts that scripts keep in the project: the block "EXTSTATE" has a block for each section, and a line for
// each value; a value that cannot stand on a line is a block "BIN" of base64.

#include "headless/chunk/output.hpp"
#include "headless/project/extension_data.hpp"

namespace headless::rpp {

void read_extension_data(project::ExtensionData& data, const chunk::Block& block);

/// Writes the block as it is where its values are still the same.
/// @param block  null if the file has none
void write_extension_data(chunk::Output& out, const chunk::Block* block, const project::ExtensionData& data);

} // namespace headless::rpp
