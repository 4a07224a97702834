#pragma once
// Copies of tracks with their items, effects and envelopes, and with what is sent to them and by them.

#include "headless/project/project.hpp"

#include <vector>

namespace headless::rpp {

/// Inserts copies of the tracks, with all that folders among them hold, after the last of them and as deep as
/// the outermost of them. Copies have identifiers of their own. What the tracks send to one another is sent
/// between the copies as well; what they exchange with others, the copies exchange too.
/// @returns the copies of the given tracks
std::vector<project::Track*> copy_tracks(project::Project& project,
                                         const std::vector<project::Track*>& tracks);

} // namespace headless::rpp
