#pragma once
// Highest and lowest sample of each short interval of a file, as level displays and level analysis need them.

#include "headless/audio/audio_store.hpp"

#include <cstdint>
#include <filesystem>
#include <span>

namespace headless {

/// What to measure: interval i lasts from start_seconds + i / peaks_per_second to the start of the next.
struct PeakRequest {
    double start_seconds = 0.0; ///< from the start of the file; may be negative
    double peaks_per_second = 1000.0;
    int channel_count =
        1; ///< 1 folds all channels of the file into one; k gives the first k of them one by one
};

/// Fills `maxima` and `minima`, each `channel_count` times the number of intervals, channels interleaved,
/// with the true extremes of the samples in each interval. An interval covers the frames from the floor of
/// its start to the floor of its end (a millionth of a frame is forgiven, so that rounding of decimal seconds
/// moves no border), and at least one frame. What lies outside the audio, and channels that the file has not,
/// read 0.
/// @returns the number of intervals up to the end of the audio; fails when the request is not positive and
/// finite,
///          and as AudioStore::read does.
Result<std::int64_t> measure_peaks(AudioStore& store, const std::filesystem::path& file,
                                   const PeakRequest& request, std::span<double> maxima,
                                   std::span<double> minima);

} // namespace headless
