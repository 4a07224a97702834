#pragma once
// Markers and regions in the file: a line for a marker, two for a region, which may have blocks between them.

#include "headless/chunk/output.hpp"
#include "headless/project/project.hpp"
#include "headless/rpp/read_object.hpp"

namespace headless::rpp {

/// Adds the project's markers among the lines and leaves places for them.
void read_markers(Reading& in, chunk::Lines& lines);

/// Finds the tracks that regions are rendered for, once the tracks are read.
void read_region_renders(project::Project& project);

void write_marker(chunk::Output& out, project::Project& project, project::Marker& marker);

/// Whether the marker's place in the file is still right.
bool stays_in_place(const project::Marker& marker);

} // namespace headless::rpp
