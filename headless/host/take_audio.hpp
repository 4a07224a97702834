#pragma once
// What is heard of a take: the frames of its file over the item's length, and the gain they are heard with.

#include "headless/audio/audio_store.hpp"
#include "headless/audio/gain_curve.hpp"
#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"

namespace headless {

struct TakeAudio {
    AudioFormat format;
    FrameRange range;
};

/// The frames that the take's item plays, silent outside the file.
/// Fails, naming the take, when there is no file or no length, and for what is not supported: a play rate
/// other than 1, a pitch shift, a channel mode, a source that repeats.
Result<TakeAudio> audio_of(AudioStore& store, const Take& take);

/// Take volume times the volume envelope, the latter while it is active; frame 0 is the item's first frame.
/// @param factor linear, on top of both
GainCurve gain_of(const Take& take, double factor = 1.0);

} // namespace headless
