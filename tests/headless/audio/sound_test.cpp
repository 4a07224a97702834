// Sounds that change others: the same samples however they are read, and how well resampling keeps a signal.

#include "headless/audio/resampler.hpp"
#include "headless/audio/sound.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace headless::test {
namespace {

struct SoundTest : testing::Test {
    std::unique_ptr<audio::Sound> file_of(const std::vector<float>& samples, int channels = 1) {
        const auto file = write_sound(folder / "sound.wav", samples, 48000, channels);
        return std::make_unique<audio::FileSound>(cache, file, cache.format(file).value());
    }

    ScratchFolder folder;
    audio::AudioCache cache;
};

std::vector<float> read(audio::Sound& sound, std::int64_t first, std::int64_t count) {
    std::vector<float> samples;
    const auto collect = [&](std::span<const float> block) -> Result<void> {
        EXPECT_LE(block.size(), audio::block_samples);
        samples.insert(samples.end(), block.begin(), block.end());
        return {};
    };
    EXPECT_TRUE(sound.read({first, count}, collect));
    return samples;
}

/// The largest difference from a sine of peak 0.5, in dB below that peak.
double largest_difference_db(const std::vector<float>& samples, double radians_per_frame) {
    double largest = 0.0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double expected = 0.5 * std::sin(radians_per_frame * static_cast<double>(i));
        largest = std::max(largest, std::abs(static_cast<double>(samples[i]) - expected));
    }
    return 20.0 * std::log10(largest / 0.5);
}

TEST_F(SoundTest, IsTheSameHoweverItIsRead) {
    constexpr std::int64_t frames = 40000;
    const auto samples = noise(3 * frames, 0.9);
    auto section = std::make_unique<audio::SectionSound>(file_of(samples, 3),
                                                         audio::FrameRange{-100, frames + 200}, true);
    auto repeated = std::make_unique<audio::RepeatedSound>(std::move(section));
    auto channels = std::make_unique<audio::ChannelSound>(
        std::move(repeated), std::vector<audio::ChannelSound::Mean>{{2}, {0, 1}});
    audio::ResampledSound sound(std::move(channels), 1.37, 48000);
    EXPECT_EQ(sound.format(), (audio::AudioFormat{48000, 2, audio::endless_frames}));
    const auto whole = read(sound, -1000, 90000);
    std::vector<float> pieces;
    for (std::int64_t first = -1000, count = 1; first < 89000; first += count, count = count * 3 + 1) {
        count = std::min(count, 89000 - first);
        pieces = pieces + read(sound, first, count);
    }
    EXPECT_EQ(pieces, whole);
}

// Read from the middle of a sine, where it passes through 0.
TEST_F(SoundTest, ResamplingKeepsTheBandAndNothingElse) {
    constexpr double rate = 48000.0;
    for (const double step : {0.5, 2.0, 44100.0 / 48000.0, 1.0 / 3.0, 1.7, 8.0}) {
        SCOPED_TRACE(step);
        const double band_hertz = rate / 2.0 / std::max(1.0, step);
        for (const double hertz : {0.01 * band_hertz, 0.5 * band_hertz, 0.89 * band_hertz}) {
            std::vector<float> sine(200000);
            for (std::size_t i = 0; i < sine.size(); ++i) {
                const double frame = static_cast<double>(i) - 10000.0 * step;
                sine[i] = static_cast<float>(0.5 * std::sin(2.0 * std::numbers::pi * hertz * frame / rate));
            }
            audio::ResampledSound sound(file_of(sine), step, 48000);
            EXPECT_EQ(sound.format().frames, std::llround(std::ceil(200000.0 / step)));
            EXPECT_LT(largest_difference_db(read(sound, 10000, 10000),
                                            2.0 * std::numbers::pi * hertz * step / rate),
                      -90.0)
                << hertz;
        }
        if (step <= 1.0)
            continue;
        audio::ResampledSound beyond(file_of(tone(4.0, 0.5, 48000, 1, 1.02 * band_hertz)), step, 48000);
        EXPECT_LT(largest_difference_db(read(beyond, 10000, 10000), 0.0), -105.0);
    }
}

} // namespace
} // namespace headless::test
