#pragma once
// Where signals go besides to the parent. A receive is a line of the receiving track, "AUXRECV", which names
// the sending track by its index; the same line is a send of that track. "HWOUT" is an output to the hardware,
// "MASTERHWOUT" the master's. The envelopes of a send or an output follow its line.

#include "headless/chunk/lines.hpp"

#include <cstddef>
#include <optional>
#include <vector>

namespace headless::project {

class Envelope;
class Project;
class Track;

/// For each old track index the new one; empty for a track that is gone.
using NewIndices = std::vector<std::optional<std::size_t>>;

/// Corrects every track's receives after tracks came, went or moved. Those from tracks that are gone go too,
/// with their envelopes.
void renumber_receives(const Project& project, const NewIndices& new_indices);

/// A line of that kind. It is valid until lines of its track come or go.
struct Route {
    Track* holder;      ///< the track in whose lines it stands
    Track* source;      ///< null if the line names a track that does not exist
    Track* destination; ///< null for the hardware
    std::size_t place;  ///< of the line among the holder's
    std::size_t end;    ///< of its envelopes
    std::size_t index;  ///< among the holder's lines of that token
};

/// In the order of their lines. Sends are those of the first receiving track first.
std::vector<Route> receives_of(Track& track);
std::vector<Route> sends_of(const Track& track);
std::vector<Route> hardware_outputs_of(Track& track);

chunk::Text& line_of(const Route& route);

/// The envelopes that follow the line.
std::vector<Envelope*> envelopes_of(const Route& route);

/// Removes the line with its envelopes.
void erase(const Route& route);

/// The lines in which an object stands that belongs to the track: its own or, for the master, the project's.
/// Null if it has none yet.
chunk::Lines* file_lines_of(Track& track);

/// What an envelope of a track belongs to.
struct EnvelopeOwner {
    std::optional<Route> route;           ///< a send or an output
    std::optional<std::size_t> effect;    ///< index of the track's effect
    std::optional<std::size_t> parameter; ///< of that effect
};

EnvelopeOwner owner_of(const Envelope& envelope);

} // namespace headless::project
