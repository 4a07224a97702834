#pragma once
// Copies of items. A copy has everything that the item has, and identifiers of its own.

#include "headless/project/project.hpp"

#include <string_view>

namespace headless::rpp {

/// Adds a copy of the item to a track of its project, at the item's position.
project::Item& copy_item(project::Item& item, project::Track& to);

/// Adds an item with that state (state.hpp), but with identifiers of its own.
/// @returns null if the text is no state of an item
project::Item* add_item(project::Track& track, std::string_view state);

/// Gives the item and all in it new identifiers. MIDI sources stay in the pool that they share.
void renew_ids(project::Item& item);

/// Gives the effects in those lines new identifiers.
void renew_effects(chunk::Lines& lines, project::Project& project);

/// Copies what was found out about the files of the takes, which no line holds.
void copy_formats(const project::Item& from, const project::Item& to);

} // namespace headless::rpp
