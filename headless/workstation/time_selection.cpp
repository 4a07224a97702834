#include "headless/workstation/time_selection.hpp"

#include "headless/rpp/properties.hpp"

#include <algorithm>

namespace headless::workstation {

TimeSelection time_selection(const project::Project& project) {
    const auto [start, end] =
        std::minmax({rpp::number_of(project, {"SELECTION", 1}), rpp::number_of(project, {"SELECTION", 2})});
    return {start, end};
}

void set_time_selection(project::Project& project, TimeSelection selection) {
    for (const char* token : {"SELECTION", "SELECTION2"}) {
        rpp::set_number(project, {token, 1}, selection.start_seconds);
        rpp::set_number(project, {token, 2}, selection.end_seconds);
    }
}

} // namespace headless::workstation
