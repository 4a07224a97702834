#pragma once
// What scripts set and read back while the workstation runs, and what no project holds.

#include "common/plugin_abi.hpp"

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace headless::workstation {

struct SessionState {
    int cursor_context = 1; ///< what a window would have the focus on: 0 tracks, 1 items, 2 envelopes
    TrackEnvelope* selected_envelope = nullptr; ///< may be stale
    MediaTrack* leftmost_in_mixer = nullptr;    ///< may be stale
    std::vector<MediaTrack*> kept_selection{};  ///< of tracks, some of which may be stale
    std::string clipboard{};
    std::string unknown_command{};                      ///< the last name that no command has
    std::map<std::pair<int, int>, int> toggle_states{}; ///< by section and command
    std::map<std::string, double> preferences{};        ///< by name
    bool is_marked_dirty = false;                       ///< the project needs saving, whatever it holds
    int change_count = 0;
    std::size_t hash_at_last_count = 0; ///< of the project's text
};

} // namespace headless::workstation
