#include "headless/audio/loudness.hpp"

#include "headless/audio/loudness_meter.hpp"

#include <vector>

namespace headless {

Result<Loudness> measure_loudness(AudioStore& store, const std::filesystem::path& file, FrameRange range,
                                  const GainCurve& gain, const LoudnessRequest& request) {
    const auto format = store.format(file);
    if (!format) {
        return tl::unexpected(format.error());
    }
    auto meter = LoudnessMeter::create(format->sample_rate, format->channels, request);
    if (!meter) {
        return tl::unexpected(Failure{file.string() + ": " + meter.error().message});
    }
    std::vector<float> heard;
    std::int64_t frame = 0;
    const auto take = [&](std::span<const float> block) -> Result<void> {
        if (gain.is_unity()) {
            meter->take(block);
            return {};
        }
        heard.resize(block.size());
        gain.apply(frame, format->sample_rate, format->channels, block, heard);
        meter->take(heard);
        frame += static_cast<std::int64_t>(block.size()) / format->channels;
        return {};
    };
    return store.read(file, range, take).map([&] { return meter->readings(); });
}

} // namespace headless
