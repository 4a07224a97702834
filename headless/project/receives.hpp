#pragma once
// What tracks receive from others. A receive is a line of the receiving track, "AUXRECV", which names the
// sending track by its index; the envelopes of the send follow the line.

#include <cstddef>
#include <optional>
#include <vector>

namespace headless::project {

class Project;

/// For each old track index the new one; empty for a track that is gone.
using NewIndices = std::vector<std::optional<std::size_t>>;

/// Corrects every track's receives after tracks came, went or moved. Those from tracks that are gone go too,
/// with their envelopes.
void renumber_receives(const Project& project, const NewIndices& new_indices);

} // namespace headless::project
