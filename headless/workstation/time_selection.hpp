#pragma once
// The stretch of the time line that the user has marked.

#include "headless/project/project.hpp"

namespace headless::workstation {

struct TimeSelection {
    double start_seconds = 0.0;
    double end_seconds = 0.0; ///< the start if nothing is marked

    bool is_empty() const { return !(end_seconds > start_seconds); }
    bool overlaps(const project::Item& item) const {
        return item.position_seconds() < end_seconds && item.end_seconds() > start_seconds;
    }
};

TimeSelection time_selection(const project::Project& project);

/// The loop follows, as it does unless the user has unlinked the two.
void set_time_selection(project::Project& project, TimeSelection selection);

} // namespace headless::workstation
