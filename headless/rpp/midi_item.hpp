#pragma once
// Items with notes.

#include "headless/project/project.hpp"

namespace headless::rpp {

/// Adds an item with one take, a MIDI source without notes of the item's length at the project's tempo. An end
/// before the start counts as the start.
project::Item& add_midi_item(project::Track& track, double start_seconds, double end_seconds);

} // namespace headless::rpp
