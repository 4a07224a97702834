#pragma once
// Remarks that appear in more than one report.

#include "headless/audio/frames.hpp"

#include <optional>
#include <string>

namespace headless::report {

/// Empty for a complete recording.
inline std::string shortfall_remark(const std::optional<audio::Shortfall>& shortfall) {
    return shortfall ? "holds " + std::to_string(shortfall->held_frames) + " of the " +
                           std::to_string(shortfall->claimed_frames) + " frames that its header claims"
                     : "";
}

} // namespace headless::report
