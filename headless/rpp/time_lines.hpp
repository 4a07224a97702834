#pragma once
// Lines about the time line whose fields do not stand for one member each: frame rate, selections, grid, view.

#include "headless/project/project.hpp"

namespace headless::rpp {

/// Reads what these lines hold; other lines are left alone.
void read_time_lines(project::Project& project, const chunk::Lines& lines);

/// Brings the line up to date, if it is one of these.
void edit_time_line(chunk::Text& line, const project::Project& project);

} // namespace headless::rpp
