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

Peaks measure(AudioStore& store, const std::filesystem::path& file, const PeakRequest& request,
              std::size_t intervals) {
    const std::size_t size = intervals * static_cast<std::size_t>(request.channel_count);
    Peaks peaks{std::vector<double>(size, 9.0), std::vector<double>(size, 9.0), 0};
    peaks.delivered = measure_peaks(store, file, request, peaks.maxima, peaks.minima);
    return peaks;
}

class PeaksAtRate : public testing::TestWithParam<int> {};

TEST_P(PeaksAtRate, are_the_true_extremes_of_each_millisecond) {
    const ScratchFolder folder;
    const int sample_rate = GetParam();
    const auto frames = static_cast<std::int64_t>(sample_rate) * 3 / 2;
    const auto samples = noise(static_cast<std::size_t>(frames), 1.2);
    const auto file = write_sound(folder / "sound.wav", samples, sample_rate);
    AudioStore store;
    const auto peaks = measure(store, file, {}, 1600);
    EXPECT_EQ(peaks.delivered, 1500);
    for (std::int64_t i = 0; i < 1600; ++i) {
        const auto begin = samples.begin() + std::min(frames, i * sample_rate / 1000);
        const auto end = samples.begin() + std::min(frames, (i + 1) * sample_rate / 1000);
        const auto place = static_cast<std::size_t>(i);
        ASSERT_EQ(peaks.maxima[place], begin < end ? *std::max_element(begin, end) : 0.0F) << i;
        ASSERT_EQ(peaks.minima[place], begin < end ? *std::min_element(begin, end) : 0.0F) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Peaks, PeaksAtRate, testing::Values(8000, 11025, 44100, 48000, 96000));

TEST(Peaks, fold_all_channels_into_one_or_tell_them_apart) {
    const ScratchFolder folder;
    const auto file = write_sound(folder / "sound.wav", {0.1F, -0.9F, 0.2F, 0.3F}, 1000, 2);
    AudioStore store;
    const auto folded = measure(store, file, {}, 2);
    EXPECT_EQ(folded.maxima, (std::vector<double>{0.1F, 0.3F}));
    EXPECT_EQ(folded.minima, (std::vector<double>{-0.9F, 0.2F}));
    const auto apart = measure(store, file, {.channel_count = 3}, 2);
    EXPECT_EQ(apart.maxima, (std::vector<double>{0.1F, -0.9F, 0.0, 0.2F, 0.3F, 0.0}));
    EXPECT_EQ(apart.minima, apart.maxima);
}

struct PlaceCase {
    const char* name;
    PeakRequest request;
    std::size_t intervals;
    std::int64_t delivered;
    std::vector<double> maxima;
};

class PeaksFrom : public testing::TestWithParam<PlaceCase> {};

// Ten frames at 10 Hz with the values 1 to 10, so that frame f lies at f / 10 seconds.
TEST_P(PeaksFrom, cover_the_frames_from_there_on) {
    const ScratchFolder folder;
    const auto file = write_sound(folder / "sound.wav", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 10);
    for (const std::size_t limit : {std::size_t{0}, AudioStore::default_byte_limit}) {
        AudioStore store(limit);
        const auto peaks = measure(store, file, GetParam().request, GetParam().intervals);
        EXPECT_EQ(peaks.delivered, GetParam().delivered);
        EXPECT_EQ(peaks.maxima, GetParam().maxima);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Peaks, PeaksFrom,
    testing::Values(PlaceCase{"the_middle", {0.3, 5.0, 1}, 2, 2, {5, 7}},
                    PlaceCase{"before_the_start", {-0.3, 5.0, 1}, 3, 3, {0, 1, 3}},
                    PlaceCase{"long_before_the_start", {-9.0, 5.0, 1}, 2, 2, {0, 0}},
                    PlaceCase{"near_the_end", {0.7, 5.0, 1}, 3, 2, {9, 10, 0}},
                    PlaceCase{"behind_the_end", {1.0, 5.0, 1}, 2, 0, {0, 0}},
                    PlaceCase{
                        "the_start_in_steps_shorter_than_a_frame", {0.0, 20.0, 1}, 5, 5, {1, 1, 2, 2, 3}},
                    PlaceCase{"the_start_in_steps_longer_than_the_file", {0.0, 0.25, 1}, 2, 1, {10, 0}}),
    [](const auto& row) { return row.param.name; });

TEST(Peaks, fail_for_requests_that_make_no_sense_and_files_that_are_none) {
    const ScratchFolder folder;
    const auto file = write_sound(folder / "sound.wav", {0.5F}, 8000);
    AudioStore store;
    const double nan = std::nan("");
    for (const PeakRequest request :
         {PeakRequest{0.0, 0.0, 1}, {0.0, -1.0, 1}, {nan, 1.0, 1}, {0.0, nan, 1}, {1e300, 1.0, 1}}) {
        EXPECT_FALSE(measure(store, file, request, 1).delivered);
    }
    EXPECT_FALSE(measure(store, folder / "none.wav", {}, 1).delivered);
    EXPECT_EQ(measure(store, file, {}, 0).delivered, 0);
}

} // namespace
} // namespace headless::test
