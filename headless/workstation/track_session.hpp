#pragma once
// What scripts set of tracks and read back, and what no project holds.

#include "headless/project/track.hpp"

#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace headless::project {
class Project;
}

namespace headless::workstation {

struct TrackSession {
    /// The track that was last selected alone; null if it is gone.
    project::Track* last_touched(const project::Project& project) const;
    void touch(const project::Track& track) { last_touched_ = track.serial(); }

    /// As scripts gave them, by the serial of the track and the key.
    std::map<std::pair<std::uint64_t, std::string>, std::string> marked_areas{};

private:
    std::uint64_t last_touched_ = 0;
};

} // namespace headless::workstation
