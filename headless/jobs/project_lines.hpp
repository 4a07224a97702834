#pragma once
// Effects and receives in the lines of a project's objects.

#include "headless/chunk/lines.hpp"
#include "headless/project/project.hpp"

#include <cstddef>
#include <string_view>

namespace headless::jobs {

struct EffectCount {
    std::size_t all = 0;
    std::size_t active = 0; ///< neither bypassed nor offline
};

/// The effects of the first chain of that token ("FXCHAIN"), with those in containers.
EffectCount count_effects(const chunk::Lines& lines, std::string_view chain);

/// The lines of the track, those of the project for its master. Empty for a new track.
const chunk::Lines& lines_of(const project::Track& track);

/// Whether the track's effects are switched on.
bool has_active_effects(const project::Track& track);

/// The token of the track's chain of effects.
std::string_view effect_chain_of(const project::Track& track);

/// Calls visit(line) for each line of that token.
template <class Visit>
void for_each_line(const chunk::Lines& lines, std::string_view token, Visit visit) {
    for (const chunk::Node& node : lines)
        if (const chunk::Text* line = node.line(); line && node.token() == token)
            visit(*line);
}

} // namespace headless::jobs
