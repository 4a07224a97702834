#pragma once
// The points of the tempo map in the file: lines of the block "TEMPOENVEX".

#include "headless/chunk/output.hpp"
#include "headless/project/project.hpp"

namespace headless::rpp {

/// The block's token; version 3 has another.
bool is_tempo_map(std::string_view token);

void read_tempo_map(project::TempoMap& tempo_map, const chunk::Block& block);

/// Writes the block with its points as they are now.
/// @param block  null if the file has none
void write_tempo_map(chunk::Output& out, const chunk::Block* block, const project::TempoMap& tempo_map);

} // namespace headless::rpp
