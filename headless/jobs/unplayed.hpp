#pragma once
// What this host does not play of a project as the workstation does.

#include "headless/project/project.hpp"
#include "headless/report/project_report.hpp"

#include <vector>

namespace headless::jobs {

/// Counted over the whole project; effects and envelopes that are switched off are left out. What only the
/// media files can tell is not considered.
std::vector<report::Unplayed> unplayed_of(const project::Project& project);

} // namespace headless::jobs
