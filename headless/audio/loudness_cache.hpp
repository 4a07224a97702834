#pragma once
// A cache of loudness readings: a repeated request for a file only costs a check of its time stamp.

#include "headless/audio/loudness.hpp"

#include <memory>
#include <string>
#include <unordered_map>

namespace headless::audio {

/// Keeps the readings most recently requested for each file, some 250 bytes per file besides its path. A file
/// that has changed on disk is measured again. Not for use from two threads at once.
///
/// A constant gain moves the maxima and the true peak by its decibels, so one measurement serves them at
/// every gain. The integrated loudness and the range have a gate at a fixed level, so they are valid only for
/// the gain they were measured with.
class LoudnessCache {
public:
    /// @param audio must outlive this object
    explicit LoudnessCache(AudioCache& audio);
    ~LoudnessCache();
    LoudnessCache(const LoudnessCache&) = delete;
    LoudnessCache& operator=(const LoudnessCache&) = delete;

    /// As measure_loudness. The result may contain readings that were not requested. With an envelope, each
    /// call measures.
    Result<Loudness> measure(const std::filesystem::path& file, FrameRange range, const GainCurve& gain,
                             const LoudnessRequest& request);

private:
    struct Measurement;

    AudioCache& audio_;
    std::unordered_map<std::filesystem::path::string_type, Measurement> by_path_;
};

} // namespace headless::audio
