#include "headless/audio/loudness.hpp"

#include "headless/audio/loudness_meter.hpp"
#include "headless/audio/momentary_search.hpp"

#include <vector>

namespace headless::audio {
namespace {

struct MeasuredRange {
    Sound& sound;
    FrameRange range;
    const GainCurve& gain;
};

template <class Meter>
Result<Loudness> measure(const MeasuredRange& audio, Result<Meter> meter) {
    if (!meter)
        return tl::unexpected(path_failure(audio.sound.file(), meter.error().message));
    const AudioFormat& format = audio.sound.format();
    std::vector<float> scaled;
    std::int64_t frame = 0;
    const auto process = [&](std::span<const float> block) -> Result<void> {
        if (audio.gain.is_unity()) {
            meter->process(block);
            return {};
        }
        scaled.resize(block.size());
        audio.gain.apply(frame, format.sample_rate, format.channels, block, scaled);
        meter->process(scaled);
        frame += static_cast<std::int64_t>(block.size()) / format.channels;
        return {};
    };
    return audio.sound.read(audio.range, process).map([&] { return meter->readings(); });
}

} // namespace

Result<Loudness> measure_loudness(Sound& sound, FrameRange range, const GainCurve& gain,
                                  const LoudnessRequest& request) {
    const MeasuredRange audio{sound, range, gain};
    const auto& [sample_rate, channels, frames] = sound.format();
    if (request == LoudnessRequest::momentary_only())
        return measure(audio, MomentarySearch::create(sample_rate, channels));
    return measure(audio, LoudnessMeter::create(sample_rate, channels, request));
}

Result<Loudness> measure_loudness(AudioCache& cache, const std::filesystem::path& file, FrameRange range,
                                  const GainCurve& gain, const LoudnessRequest& request) {
    return FileSound::open(cache, file).and_then([&](FileSound&& sound) {
        return measure_loudness(sound, range, gain, request);
    });
}

} // namespace headless::audio
