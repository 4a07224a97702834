#include "headless/audio/level.hpp"

#include <cmath>
#include <cstdint>
#include <vector>

namespace headless::audio {

Result<Level> measure_level(Sound& sound, FrameRange range, const GainCurve& gain) {
    const AudioFormat& format = sound.format();
    const auto width = static_cast<std::size_t>(format.channels);
    Level level;
    double square_sum = 0.0;
    std::size_t samples = 0;
    std::size_t peak_place = 0;
    std::vector<float> scaled;
    const auto process = [&](std::span<const float> block) -> Result<void> {
        scaled.resize(block.size());
        gain.apply(static_cast<std::int64_t>(samples / width), format.sample_rate, format.channels, block,
                   scaled);
        for (const float sample : scaled) {
            const double magnitude = std::abs(static_cast<double>(sample));
            square_sum += magnitude * magnitude;
            if (magnitude > level.peak) {
                level.peak = magnitude;
                peak_place = samples;
            }
            ++samples;
        }
        return {};
    };
    return sound.read(range, process).map([&] {
        const std::size_t peak_frame = peak_place / width;
        level.peak_position_seconds = static_cast<double>(peak_frame) / format.sample_rate;
        level.mean_square = samples > 0 ? square_sum / static_cast<double>(samples) : 0.0;
        return level;
    });
}

} // namespace headless::audio
