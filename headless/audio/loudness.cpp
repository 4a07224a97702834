#include "headless/audio/loudness.hpp"

#include "headless/audio/loudness_meter.hpp"
#include "headless/audio/momentary_search.hpp"

#include <vector>

namespace headless::audio {
namespace {

struct MeasuredRange {
    AudioCache& cache;
    const std::filesystem::path& file;
    FrameRange range;
    const GainCurve& gain;
    AudioFormat format;
};

template <class Meter>
Result<Loudness> measure(const MeasuredRange& audio, Result<Meter> meter) {
    if (!meter)
        return tl::unexpected(path_failure(audio.file, meter.error().message));
    std::vector<float> scaled;
    std::int64_t frame = 0;
    const auto process = [&](std::span<const float> block) -> Result<void> {
        if (audio.gain.is_unity()) {
            meter->process(block);
            return {};
        }
        scaled.resize(block.size());
        audio.gain.apply(frame, audio.format.sample_rate, audio.format.channels, block, scaled);
        meter->process(scaled);
        frame += static_cast<std::int64_t>(block.size()) / audio.format.channels;
        return {};
    };
    return audio.cache.read(audio.file, audio.range, process).map([&] { return meter->readings(); });
}

} // namespace

Result<Loudness> measure_loudness(AudioCache& cache, const std::filesystem::path& file, FrameRange range,
                                  const GainCurve& gain, const LoudnessRequest& request) {
    const auto format = cache.format(file);
    if (!format)
        return tl::unexpected(format.error());
    const MeasuredRange audio{cache, file, range, gain, *format};
    if (request == LoudnessRequest::momentary_only())
        return measure(audio, MomentarySearch::create(format->sample_rate, format->channels));
    return measure(audio, LoudnessMeter::create(format->sample_rate, format->channels, request));
}

} // namespace headless::audio
