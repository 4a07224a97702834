#pragma once
// Loudness according to EBU R 128 and ITU-R BS.1770 of a range of a file, with a gain applied. A file of one
// channel is measured as one channel: 3 LU below the same signal on two loudspeakers.

#include "headless/audio/audio_cache.hpp"
#include "headless/audio/gain_curve.hpp"
#include "headless/audio/sound.hpp"

#include <filesystem>
#include <optional>

namespace headless::audio {

/// The window of a momentary reading, which is also the shortest range that has one.
constexpr int momentary_window_milliseconds = 400;
constexpr double momentary_window_seconds = momentary_window_milliseconds / 1000.0;

/// The readings to measure. Each costs time; the momentary maximum alone is the cheapest.
struct LoudnessRequest {
    bool integrated = false;
    bool loudness_range = false;
    bool true_peak = false;
    bool short_term_maximum = false;
    bool momentary_maximum = false;
    /// Distance between the windows that are searched for the two maxima: 10 ms, or 400 ms for a coarse
    /// reading.
    int hop_milliseconds = 10;

    bool operator==(const LoudnessRequest&) const = default;

    static constexpr LoudnessRequest momentary_only() { return {.momentary_maximum = true}; }
    static constexpr LoudnessRequest everything() { return {true, true, true, true, true}; }
};

/// A reading and its position in the measured range, in seconds from the first frame.
struct PlacedReading {
    double value = 0.0;
    double position_seconds = 0.0;
};

/// The requested readings. A reading is empty if the range is too short for it. Silence reads negative
/// infinity.
struct Loudness {
    std::optional<double> integrated_lufs;                ///< gated; at least 0.4 s
    std::optional<double> loudness_range_lu;              ///< EBU Tech 3342; at least 3 s
    std::optional<PlacedReading> true_peak_dbtp;          ///< oversampled; placed to 10 ms
    std::optional<PlacedReading> short_term_maximum_lufs; ///< placed by the start of its 3 s window
    std::optional<PlacedReading> momentary_maximum_lufs;  ///< placed by the start of its 0.4 s window
};

/// Whether loudness is defined for this sample rate and number of channels.
bool is_loudness_defined(int sample_rate, int channels);

/// Measures `range` of `sound` times `gain`. Fails as reading does, and if loudness is not defined for the
/// sample rate or number of channels.
Result<Loudness> measure_loudness(Sound& sound, FrameRange range, const GainCurve& gain,
                                  const LoudnessRequest& request);

/// The same of a file.
Result<Loudness> measure_loudness(AudioCache& cache, const std::filesystem::path& file, FrameRange range,
                                  const GainCurve& gain, const LoudnessRequest& request);

} // namespace headless::audio
