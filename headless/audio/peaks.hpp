#pragma once
// Highest and lowest sample of each short interval of a file, for level displays and level analysis.

#include "headless/audio/sound.hpp"

#include <cstdint>
#include <filesystem>
#include <span>

namespace headless::audio {

/// What to measure: interval i lasts from start_seconds + i / peaks_per_second to the start of the next.
struct PeakRequest {
    double start_seconds = 0.0; ///< from the start of the sound; may be negative
    double peaks_per_second = 1000.0;
    int channel_count = 1; ///< 1 folds all channels into one; k gives the first k separately
};

/// Fills `maxima` and `minima` with the true extremes of the samples in each interval. Each has
/// `channel_count` times the number of intervals as its size, channels interleaved. An interval covers the
/// frames from the floor of its start to the floor of its end (with a tolerance of a millionth of a frame, so
/// that rounding of decimal seconds moves no border), and at least one frame. Values outside the audio, and
/// of channels that the sound does not have, are 0.
/// @returns the number of intervals up to the end of the audio; fails if the request is not positive and
/// finite, and as reading does
Result<std::int64_t> measure_peaks(Sound& sound, const PeakRequest& request, std::span<double> maxima,
                                   std::span<double> minima);

/// The same of a file.
Result<std::int64_t> measure_peaks(AudioCache& cache, const std::filesystem::path& file,
                                   const PeakRequest& request, std::span<double> maxima,
                                   std::span<double> minima);

} // namespace headless::audio
