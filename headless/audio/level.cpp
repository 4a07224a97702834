#include "headless/audio/level.hpp"

#include <cmath>
#include <cstdint>
#include <vector>

namespace headless::audio {

Result<Level> measure_level(Sound& sound, FrameRange range, const GainCurve& gain) {
    const auto& [sample_rate, channels, frames] = sound.format();
    const auto width = static_cast<std::size_t>(channels);
    Level level;
    double square_sum = 0.0;
    std::size_t samples = 0;
    std::size_t peak_place = 0;
    std::vector<float> scaled;
    const auto process = [&](std::span<const float> block) -> Result<void> {
        scaled.resize(block.size());
        gain.apply(static_cast<std::int64_t>(samples / width), sample_rate, channels, block, scaled);
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
        level.peak_position_seconds = static_cast<double>(peak_place / width) / sample_rate;
        level.mean_square = samples > 0 ? square_sum / static_cast<double>(samples) : 0.0;
        return level;
    });
}

} // namespace headless::audio
