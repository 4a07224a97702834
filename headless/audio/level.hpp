#pragma once
// The highest sample and the mean level of a range of a sound, with a gain applied.

#include "headless/audio/gain_curve.hpp"
#include "headless/audio/sound.hpp"

namespace headless::audio {

struct Level {
    double peak = 0.0;                  ///< the largest absolute sample; full scale is 1
    double peak_position_seconds = 0.0; ///< of the first such sample, from the range's start
    double mean_square = 0.0;           ///< over the samples of all channels
};

/// Measures `range` of `sound` times `gain`. Fails as reading does.
Result<Level> measure_level(Sound& sound, FrameRange range, const GainCurve& gain);

} // namespace headless::audio
