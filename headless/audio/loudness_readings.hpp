#pragma once
// Loudness readings that are kept: asking again about a file costs a look at its time stamp.

#include "headless/audio/loudness.hpp"

#include <memory>
#include <string>
#include <unordered_map>

namespace headless {

/// The readings of each file asked about last, some 250 bytes a file beside its path; a file that has changed
/// on disk is measured again. Not for use from two threads at once.
///
/// A constant gain moves the maxima and the true peak by its decibels, so one measurement serves them at
/// every gain. The integrated loudness and the range have a gate at a fixed level: these hold at the gain
/// they were measured with.
class LoudnessReadings {
public:
    /// @param store outlives this
    explicit LoudnessReadings(AudioStore& store);
    ~LoudnessReadings();
    LoudnessReadings(const LoudnessReadings&) = delete;
    LoudnessReadings& operator=(const LoudnessReadings&) = delete;

    /// As measure_loudness; readings beyond those asked for may be there too. What is heard with an envelope
    /// is measured each time.
    Result<Loudness> measure(const std::filesystem::path& file, FrameRange range, const GainCurve& gain,
                             const LoudnessRequest& request);

private:
    struct Entry;

    AudioStore& store_;
    std::unordered_map<std::string, Entry> by_path_;
};

} // namespace headless
