#include "headless/audio/loudness.hpp"

#include "headless/audio/loudness_meter.hpp"
#include "headless/audio/momentary_search.hpp"

#include <vector>

namespace headless::audio {
namespace {

/// The audio with the gain applied.
struct HeardRange {
    AudioCache& store;
    const std::filesystem::path& file;
    FrameRange range;
    const GainCurve& gain;
    AudioFormat format;
};

template <class Meter>
Result<Loudness> listen(const HeardRange& audio, Result<Meter> meter) {
    if (!meter)
        return tl::unexpected(Failure{audio.file.string() + ": " + meter.error().message});
    std::vector<float> heard;
    std::int64_t frame = 0;
    const auto take = [&](std::span<const float> block) -> Result<void> {
        if (audio.gain.is_unity()) {
            meter->take(block);
            return {};
        }
        heard.resize(block.size());
        audio.gain.apply(frame, audio.format.sample_rate, audio.format.channels, block, heard);
        meter->take(heard);
        frame += static_cast<std::int64_t>(block.size()) / audio.format.channels;
        return {};
    };
    return audio.store.read(audio.file, audio.range, take).map([&] { return meter->readings(); });
}

} // namespace

Result<Loudness> measure_loudness(AudioCache& store, const std::filesystem::path& file, FrameRange range,
                                  const GainCurve& gain, const LoudnessRequest& request) {
    const auto format = store.format(file);
    if (!format)
        return tl::unexpected(format.error());
    const HeardRange audio{store, file, range, gain, *format};
    if (request == LoudnessRequest::momentary_only())
        return listen(audio, MomentarySearch::create(format->sample_rate, format->channels));
    return listen(audio, LoudnessMeter::create(format->sample_rate, format->channels, request));
}

} // namespace headless::audio
