#pragma once
// The line that opens and closes folders, "ISBUS". Since version 4 it has the change of depth as its second
// number; before, its only number is 1 to open a folder and 2 to close one.

#include "headless/chunk/lines.hpp"

namespace headless::rpp {

/// 1 if the track opens a folder, -n if it closes n.
int read_depth_change(const chunk::Text& line);

/// The line with another change of depth, in the form that it has if that can hold the change.
chunk::Text with_depth_change(const chunk::Text& line, int change);

} // namespace headless::rpp
