#pragma once
// Sound files that the tests make and read.

#include "tests/headless/support/scratch_folder.hpp"

#include <sndfile.hh>

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <numbers>
#include <stdexcept>
#include <vector>

namespace headless::test {

inline constexpr int float_wav = SF_FORMAT_WAV | SF_FORMAT_FLOAT;

inline std::filesystem::path write_sound(const std::filesystem::path& file, const std::vector<float>& samples,
                                         int sample_rate, int channels = 1, int format = float_wav) {
    SndfileHandle handle(file.c_str(), SFM_WRITE, format, channels, sample_rate);
    const auto count = static_cast<sf_count_t>(samples.size());
    if (!handle || handle.write(samples.data(), count) != count)
        throw std::runtime_error("cannot write " + file.string());
    return file;
}

struct Sound {
    int sample_rate = 0;
    int channels = 0;
    std::vector<float> samples; ///< interleaved
};

/// Without samples when there is no such sound file.
inline Sound read_sound(const std::filesystem::path& file) {
    SndfileHandle handle(file.c_str());
    std::vector<float> samples(static_cast<std::size_t>(handle.frames() * handle.channels()));
    handle.readf(samples.data(), handle.frames());
    return {handle.samplerate(), handle.channels(), std::move(samples)};
}

/// A sine of that peak, the same in all channels, interleaved.
inline std::vector<float> tone(double seconds, double peak, int sample_rate, int channels = 1,
                               double hertz = 1000.0) {
    std::vector<float> samples;
    const auto frames = std::llround(seconds * sample_rate);
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        const double phase = 2.0 * std::numbers::pi * hertz * static_cast<double>(frame) / sample_rate;
        samples.insert(samples.end(), static_cast<std::size_t>(channels),
                       static_cast<float>(peak * std::sin(phase)));
    }
    return samples;
}

inline std::vector<float> silence(double seconds, int sample_rate, int channels = 1) {
    return std::vector<float>(static_cast<std::size_t>(std::llround(seconds * sample_rate) * channels));
}

/// Repeatable noise, evenly spread within +-peak.
inline std::vector<float> noise(std::size_t samples, double peak, std::uint32_t seed = 1) {
    std::vector<float> values(samples);
    for (float& value : values) {
        seed = seed * 1664525U + 1013904223U;
        value = static_cast<float>(peak * (static_cast<double>(seed) / 2147483648.0 - 1.0));
    }
    return values;
}

inline std::vector<float> operator+(std::vector<float> left, const std::vector<float>& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

} // namespace headless::test
