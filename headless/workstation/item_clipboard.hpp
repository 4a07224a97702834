#pragma once
// Items that were copied, to be pasted elsewhere.

#include "headless/project/project.hpp"

#include <cstddef>
#include <string>
#include <vector>

namespace headless::workstation {

class ItemClipboard {
public:
    /// Replaces what was copied before, unless nothing is selected.
    void copy_selected(project::Project& project);

    bool is_empty() const { return items_.empty(); }

    /// Pastes with the first of the copied tracks at `first_track`, and the first item at `at_seconds`. Adds
    /// tracks at the end where there are too few. The new items are the only ones selected; groups among them
    /// are new ones.
    /// @returns where the last of them ends
    double paste(project::Project& project, std::size_t first_track, double at_seconds) const;

private:
    struct CopiedItem {
        std::string state;
        std::size_t track;       ///< after the first
        double position_seconds; ///< after the first
    };

    std::vector<CopiedItem> items_;
};

} // namespace headless::workstation
