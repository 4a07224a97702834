#pragma once
// Splits items, and moves their edges while what is in them stays where it is in time.

#include "headless/project/project.hpp"

namespace headless::rpp {

/// Splits the item at a time of the project. It becomes the part before; the part after is a copy with
/// identifiers of its own. Envelopes, stretch markers and take markers are cut there; the fades there go.
/// @returns the part after; null if the time does not lie within the item
project::Item* split_item(project::Item& item, double at_seconds);

/// Moves the item's edges.
/// @returns false if they are there already, or if the end does not lie after the start
bool set_edges(project::Item& item, double start_seconds, double end_seconds);

} // namespace headless::rpp
