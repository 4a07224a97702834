#pragma once
// The audible part of a take: the frames of its file over the item's length, and the gain applied to them.

#include "headless/audio/audio_cache.hpp"
#include "headless/audio/gain_curve.hpp"
#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"

namespace headless::workstation {

struct TakeAudio {
    audio::AudioFormat format;
    audio::FrameRange range;
};

/// The format of the file with as many frames as can be decoded, whatever its header claims.
Result<audio::AudioFormat> decoded_format(audio::AudioCache& cache, const std::filesystem::path& file);

/// The frames that the take's item plays, silent outside the file. Fails, naming the take, if there is no
/// file or no length, and for unsupported settings: a play rate other than 1, a pitch shift, a channel mode,
/// a source that repeats.
Result<TakeAudio> audio_of(audio::AudioCache& cache, const project::Take& take);

/// Take volume times the volume envelope if that is active; frame 0 is the item's first frame.
/// @param factor linear, on top of both
audio::GainCurve gain_of(const project::Take& take, double factor = 1.0);

} // namespace headless::workstation
