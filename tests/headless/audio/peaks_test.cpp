#include "headless/audio/peaks.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace headless::test {
namespace {

struct Peaks {
    std::vector<double> maxima;
    std::vector<double> minima;
    Result<std::int64_t> delivered;
};

struct PeaksTest : testing::Test {
    Peaks measure(const audio::PeakRequest& request, std::size_t intervals) {
        const std::size_t size = intervals * static_cast<std::size_t>(request.channel_count);
        Peaks peaks{std::vector<double>(size, 9.0), std::vector<double>(size, 9.0), 0};
        peaks.delivered = audio::measure_peaks(cache, file, request, peaks.maxima, peaks.minima);
        return peaks;
    }

    ScratchFolder folder;
    std::filesystem::path file = folder / "sound.wav";
    audio::AudioCache cache;
};

TEST_F(PeaksTest, AreTheExtremesOfEachMillisecond) {
    for (const std::int64_t rate : {8000, 11025, 44100, 96000}) {
        SCOPED_TRACE(rate);
        const std::int64_t frames = rate * 3 / 2;
        const auto samples = noise(static_cast<std::size_t>(frames), 1.2);
        write_sound(file, samples, static_cast<int>(rate));
        const auto peaks = measure({}, 1600);
        EXPECT_EQ(peaks.delivered, 1500);
        for (std::int64_t i = 0; i < 1600; ++i) {
            const auto begin = samples.begin() + std::min(frames, i * rate / 1000);
            const auto end = samples.begin() + std::min(frames, (i + 1) * rate / 1000);
            const auto place = static_cast<std::size_t>(i);
            ASSERT_EQ(peaks.maxima[place], begin < end ? *std::max_element(begin, end) : 0.0F) << i;
            ASSERT_EQ(peaks.minima[place], begin < end ? *std::min_element(begin, end) : 0.0F) << i;
        }
    }
}

TEST_F(PeaksTest, FoldOrSeparateChannels) {
    write_sound(file, {0.1F, -0.9F, 0.2F, 0.3F}, 1000, 2);
    const auto folded = measure({}, 2);
    EXPECT_EQ(folded.maxima, (std::vector<double>{0.1F, 0.3F}));
    EXPECT_EQ(folded.minima, (std::vector<double>{-0.9F, 0.2F}));
    const auto apart = measure({.channel_count = 3}, 2);
    EXPECT_EQ(apart.maxima, (std::vector<double>{0.1F, -0.9F, 0.0, 0.2F, 0.3F, 0.0}));
    EXPECT_EQ(apart.minima, apart.maxima);
}

// Ten frames at 10 Hz with the values 1 to 10, so that frame f lies at f / 10 seconds.
TEST_F(PeaksTest, BeginAtTheRequestedStart) {
    struct Place {
        audio::PeakRequest request;
        std::int64_t delivered;
        std::vector<double> maxima;
    };
    write_sound(file, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 10);
    for (const auto& [request, delivered, maxima] : {Place{{0.3, 5.0, 1}, 2, {5, 7}},
                                                     {{-0.3, 5.0, 1}, 3, {0, 1, 3}},
                                                     {{0.7, 5.0, 1}, 2, {9, 10, 0}},
                                                     {{1.0, 5.0, 1}, 0, {0, 0}},
                                                     {{0.0, 20.0, 1}, 5, {1, 1, 2, 2, 3}},
                                                     {{0.0, 0.25, 1}, 1, {10, 0}}}) {
        const auto peaks = measure(request, maxima.size());
        EXPECT_EQ(peaks.delivered, delivered) << request.start_seconds;
        EXPECT_EQ(peaks.maxima, maxima) << request.start_seconds;
    }
}

TEST_F(PeaksTest, FailForInvalidRequests) {
    write_sound(file, {0.5F}, 8000);
    for (const audio::PeakRequest request :
         {audio::PeakRequest{0.0, 0.0, 1}, {std::nan(""), 1.0, 1}, {1e300, 1.0, 1}})
        EXPECT_FALSE(measure(request, 1).delivered);
    EXPECT_EQ(measure({}, 0).delivered, 0);
}

} // namespace
} // namespace headless::test
