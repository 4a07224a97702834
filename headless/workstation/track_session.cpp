#include "headless/workstation/track_session.hpp"

#include "headless/project/project.hpp"

#include <algorithm>

namespace headless::workstation {

project::Track* TrackSession::last_touched(const project::Project& project) const {
    if (project.master().serial() == last_touched_)
        return &project.master();
    const auto track = std::ranges::find(project.tracks(), last_touched_, &project::Track::serial);
    return track == project.tracks().end() ? nullptr : track->get();
}

} // namespace headless::workstation
