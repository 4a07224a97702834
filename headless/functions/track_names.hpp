#pragma once
// Tracks as users see them.

#include "headless/project/project.hpp"

#include <string>

namespace headless::functions {

inline bool is_master(const project::Track& track) { return &track == &track.project().master(); }

/// "Track N" for a track without a name.
inline std::string displayed_name(const project::Track& track) {
    if (is_master(track))
        return "MASTER";
    return track.name.empty() ? "Track " + std::to_string(track.index() + 1) : track.name;
}

} // namespace headless::functions
