#pragma once
// The envelopes of a track as scripts count them, and what is known of each kind.

#include "headless/functions/parameters.hpp"

#include <string>
#include <string_view>
#include <vector>

namespace headless::functions {

/// Those of the track itself, of its effects and of what it sends. The envelopes of a send lie with the track
/// that receives.
std::vector<project::Envelope*> envelopes_of(const project::Track& track);

/// The envelope with that identifier or, with a text such as "<VOLENV2", of that kind; null if there is none.
project::Envelope* find_envelope(const project::Track& track, std::string_view text);

/// The track to which scripts count the envelope; null for a take's.
project::Track* parent_of(const project::Envelope& envelope);

struct ValueRange {
    double lowest;
    double highest;
    double center; ///< the value of an envelope without points
    int type;      ///< as the SWS extension numbers the kinds
};

/// Of the envelope's values as its file holds them.
ValueRange range_of(const project::Envelope& envelope);

/// Gives the envelope lines, so that what has no member can be written.
void give_lines(project::Envelope& envelope);

/// The project that the envelope belongs to.
project::Project& project_of(const project::Envelope& envelope);

} // namespace headless::functions
