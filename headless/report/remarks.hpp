#pragma once
// Remarks that appear in more than one report.

#include "headless/audio/frames.hpp"

#include <filesystem>
#include <optional>
#include <string>

namespace headless::report {

/// Empty for a complete recording.
inline std::string truncation_remark(const std::optional<audio::Truncation>& truncation) {
    return truncation ? "holds " + std::to_string(truncation->decoded_frames) + " of the " +
                            std::to_string(truncation->claimed_frames) + " frames that its header claims"
                      : "";
}

/// For a project of another program that was saved over.
inline std::string backup_message(const std::filesystem::path& project, const std::filesystem::path& backup) {
    return project.string() + ": was changed; as it was it is kept as " + backup.string();
}

} // namespace headless::report
