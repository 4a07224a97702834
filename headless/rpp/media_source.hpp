#pragma once
// The block of a take's source, and the paths in it.

#include "headless/chunk/output.hpp"
#include "headless/project/take.hpp"

#include <filesystem>
#include <string>
#include <string_view>

namespace headless::rpp {

/// The file that a path in a project file names.
/// @param folder the folder of the project file
std::filesystem::path file_of(std::string_view text, const std::filesystem::path& folder);

/// The path as the project file holds it: relative if the file lies below the folder, else absolute.
std::string path_text(const std::filesystem::path& file, const std::filesystem::path& folder);

project::Source read_source(const chunk::Block& block, const std::filesystem::path& folder);

/// Whether both play the same, whatever the formats that were found when they were decoded.
bool plays_same(const project::Source& left, const project::Source& right);

/// Writes the source as its block is, with other paths where the source has other files. A source of another
/// kind than the block's is written anew.
/// @param block null if the take has none
void write_source(chunk::Output& out, const chunk::Block* block, const project::Source& source,
                  const std::filesystem::path& folder);

/// The line with its path as it is to be named from another project folder; `word` is the path's.
chunk::Text moved_line(const chunk::Text& line, std::size_t word, const std::filesystem::path& from,
                       const std::filesystem::path& to);

} // namespace headless::rpp
