#pragma once
// Remarks that appear in more than one report.

#include "headless/audio/frames.hpp"

#include <optional>
#include <string>

namespace headless::report {

/// Empty for a complete recording.
inline std::string truncation_remark(const std::optional<audio::Truncation>& truncation) {
    return truncation ? "holds " + std::to_string(truncation->decoded_frames) + " of the " +
                            std::to_string(truncation->claimed_frames) + " frames that its header claims"
                      : "";
}

} // namespace headless::report
