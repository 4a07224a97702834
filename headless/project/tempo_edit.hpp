#pragma once
// Edits of the tempo that take along what is attached to beats: items, markers, regions and later points of the
// tempo map stay at their quarter notes, if their timebase says so. An item whose length is attached as well plays
// faster or slower, so that it has the same beats.

#include "headless/project/tempo_map.hpp"

#include <cstddef>
#include <optional>

namespace headless::project {

/// As TempoMap::add.
std::optional<std::size_t> add_tempo_point(Project& project, TempoPoint point);

/// As TempoMap::replace.
std::optional<std::size_t> replace_tempo_point(Project& project, std::size_t index, TempoPoint point);

/// As TempoMap::erase.
bool erase_tempo_point(Project& project, std::size_t index);

/// Sets the tempo that holds before the first point.
/// @param bpm  quarter notes a minute; what is no tempo changes nothing
void set_project_tempo(Project& project, double bpm);

} // namespace headless::project
