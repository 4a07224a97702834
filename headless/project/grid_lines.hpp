#pragma once
// The lines of the project's grid. They begin anew at each measure; a division longer than a measure has a line
// at every so many measures. Lines lie at 0 or later.

namespace headless::project {

class Project;

/// All in seconds.
double closest_grid_line(const Project& project, double seconds);

/// The last line before the position, 0 if there is none.
double previous_grid_line(const Project& project, double seconds);

/// The first line after the position.
double next_grid_line(const Project& project, double seconds);

/// The closest line while the grid snaps, otherwise the position itself.
double snapped(const Project& project, double seconds);

} // namespace headless::project
