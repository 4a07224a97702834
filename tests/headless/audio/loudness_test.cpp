#include "headless/audio/loudness.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <ebur128.h>
#include <gtest/gtest.h>

namespace headless::test {
namespace {

Loudness measure(const std::vector<float>& samples, int sample_rate, int channels,
                 const LoudnessRequest& request = LoudnessRequest::everything(),
                 const GainCurve& gain = GainCurve()) {
    const ScratchFolder folder;
    const auto file = write_sound(folder / "sound.wav", samples, sample_rate, channels);
    AudioStore store;
    const auto frames = static_cast<std::int64_t>(samples.size()) / channels;
    const auto loudness = measure_loudness(store, file, {0, frames}, gain, request);
    EXPECT_TRUE(loudness) << loudness.error().message;
    return loudness.value_or(Loudness{});
}

PlacedReading momentary(const std::vector<float>& samples, int sample_rate, int channels,
                        const GainCurve& gain = GainCurve()) {
    return measure(samples, sample_rate, channels, LoudnessRequest::momentary_only(), gain)
        .momentary_maximum_lufs.value();
}

std::optional<double> value_of(const std::optional<PlacedReading>& reading) {
    return reading ? std::optional(reading->value) : std::nullopt;
}

double peak_of_dbfs(double level_db) { return std::pow(10.0, level_db / 20.0); }

class LoudnessAtRate : public testing::TestWithParam<int> {};

// EBU Tech 3341, minimum requirement test 13: file i holds a stereo 1 kHz tone of 0.4 s at -23 dBFS, i * 20
// ms late.
TEST_P(LoudnessAtRate, finds_the_momentary_maximum_of_a_tone_wherever_it_lies) {
    const int rate = GetParam();
    for (int i = 0; i < 20; ++i) {
        const auto maximum = momentary(silence(i * 0.02, rate, 2) + tone(0.4, peak_of_dbfs(-23), rate, 2) +
                                           silence(1.0, rate, 2),
                                       rate, 2);
        EXPECT_NEAR(maximum.value, -23.0, 0.1) << "file " << i + 1;
        EXPECT_NEAR(maximum.position_seconds, i * 0.02, 0.0101) << "file " << i + 1;
    }
}

// Test 14: one file of 20 such tones, each 1 dB louder from -38 dBFS on and 20 ms later in its stretch.
TEST_P(LoudnessAtRate, finds_the_momentary_maximum_of_tones_that_grow_louder) {
    const int rate = GetParam();
    std::vector<float> samples;
    for (int i = 0; i < 20; ++i) {
        samples = std::move(samples) + silence(i * 0.02, rate, 2) +
                  tone(0.4, peak_of_dbfs(-38 + i), rate, 2) + silence(0.4 - i * 0.02, rate, 2);
        EXPECT_NEAR(momentary(samples, rate, 2).value, -38.0 + i, 0.1) << "up to tone " << i + 1;
    }
}

INSTANTIATE_TEST_SUITE_P(Ebu3341, LoudnessAtRate, testing::Values(16000, 44100, 48000, 96000));

/// The loudest of the windows of that many times 10 ms for which the library is asked at every 10 ms.
PlacedReading library_maximum(const std::vector<float>& samples, int rate, int window_hops,
                              int (*ask)(ebur128_state*, double*)) {
    ebur128_state* state = ebur128_init(1, static_cast<unsigned long>(rate), EBUR128_MODE_S);
    PlacedReading maximum{-HUGE_VAL, 0.0};
    std::int64_t fed = 0;
    for (int hop = 1; hop <= 600; ++hop) {
        const std::int64_t border = std::llround(hop * rate / 100.0);
        ebur128_add_frames_float(state, samples.data() + fed, static_cast<std::size_t>(border - fed));
        fed = border;
        double value = 0.0;
        ask(state, &value);
        if (hop >= window_hops && value > maximum.value) {
            maximum = {value, (hop - window_hops) * 0.01};
        }
    }
    ebur128_destroy(&state);
    return maximum;
}

TEST(Loudness, has_the_maxima_that_asking_the_library_at_every_ten_milliseconds_gives) {
    for (const int rate : {8000, 11025, 22050, 44056, 48000}) {
        SCOPED_TRACE(rate);
        std::vector<float> samples;
        for (int i = 0; i < 60; ++i) {
            samples = std::move(samples) +
                      noise(static_cast<std::size_t>(rate) / 10 + 1, 0.5 + 0.4 * std::sin(i * i));
        }
        const auto loudness =
            measure(samples, rate, 1, {.short_term_maximum = true, .momentary_maximum = true});
        const auto expect_equal = [](const PlacedReading& found, const PlacedReading& expected) {
            EXPECT_NEAR(found.value, expected.value, 1e-9);
            EXPECT_NEAR(found.position_seconds, expected.position_seconds, 1e-9);
        };
        expect_equal(loudness.momentary_maximum_lufs.value(),
                     library_maximum(samples, rate, 40, ebur128_loudness_momentary));
        expect_equal(loudness.short_term_maximum_lufs.value(),
                     library_maximum(samples, rate, 300, ebur128_loudness_shortterm));
    }
}

// EBU Tech 3341 tests 1 and 12, and EBU Tech 3342 test 1, shortened.
TEST(Loudness, reads_the_published_values_of_steady_and_stepped_tones) {
    const auto steady = measure(tone(20.0, peak_of_dbfs(-23), 48000, 2), 48000, 2);
    EXPECT_NEAR(steady.integrated_lufs.value(), -23.0, 0.1);
    EXPECT_NEAR(steady.short_term_maximum_lufs.value().value, -23.0, 0.1);
    EXPECT_NEAR(steady.momentary_maximum_lufs.value().value, -23.0, 0.1);
    EXPECT_NEAR(steady.true_peak_dbtp.value().value, -23.0, 0.2);
    const auto stepped =
        measure(tone(20.0, peak_of_dbfs(-20), 48000, 2) + tone(20.0, peak_of_dbfs(-30), 48000, 2), 48000, 2);
    EXPECT_NEAR(stepped.range_lu.value(), 10.0, 1.0);
}

TEST(Loudness, reads_one_channel_three_units_below_the_same_in_two) {
    EXPECT_NEAR(momentary(tone(1.0, 0.1, 48000), 48000, 1).value,
                momentary(tone(1.0, 0.1, 48000, 2), 48000, 2).value - 3.01, 0.005);
}

TEST(Loudness, is_of_what_is_heard_with_the_gain) {
    Envelope envelope("Volume");
    envelope.set_points({{0.0, 1.0}, {1.0, 1.0}, {1.0, 0.1}, {2.0, 0.1}});
    const auto samples = tone(2.0, 0.5, 48000);
    const double plain = momentary(samples, 48000, 1).value;
    EXPECT_NEAR(momentary(samples, 48000, 1, GainCurve(envelope, 1.0)).value, plain - 20.0, 1e-3);
    EXPECT_NEAR(momentary(samples, 48000, 1, GainCurve(envelope, 0.0, 2.0)).value, plain + 6.0206, 1e-3);
}

TEST(Loudness, of_the_coarse_reading_looks_at_one_window_every_400_milliseconds) {
    const auto samples = silence(0.2, 48000) + tone(0.4, 0.1, 48000) + silence(0.6, 48000);
    const auto coarse = measure(samples, 48000, 1, {.momentary_maximum = true, .hop_milliseconds = 400});
    EXPECT_NEAR(coarse.momentary_maximum_lufs->value, momentary(samples, 48000, 1).value - 3.01, 0.05);
}

TEST(Loudness, has_the_readings_that_the_length_allows_and_they_are_infinite_for_silence) {
    for (const double seconds : {0.399, 0.4, 2.999, 3.0}) {
        SCOPED_TRACE(seconds);
        const auto loudness = measure(silence(seconds, 44100), 44100, 1);
        const auto of_momentary = seconds >= 0.4 ? std::optional(-HUGE_VAL) : std::nullopt;
        const auto of_short_term = seconds >= 3.0 ? std::optional(-HUGE_VAL) : std::nullopt;
        EXPECT_EQ(value_of(loudness.momentary_maximum_lufs), of_momentary);
        EXPECT_EQ(loudness.integrated_lufs, of_momentary);
        EXPECT_EQ(value_of(loudness.short_term_maximum_lufs), of_short_term);
        EXPECT_EQ(loudness.range_lu.has_value(), of_short_term.has_value());
        EXPECT_EQ(value_of(loudness.true_peak_dbtp), -HUGE_VAL);
    }
}

TEST(Loudness, places_the_true_peak_where_it_is) {
    auto samples = tone(1.0, 0.1, 48000);
    samples[36000] = 0.9F;
    const auto loudness = measure(samples, 48000, 1, {.true_peak = true});
    EXPECT_NEAR(loudness.true_peak_dbtp->position_seconds, 0.75, 0.0101);
    EXPECT_GT(loudness.true_peak_dbtp->value, -1.0);
}

TEST(Loudness, fails_at_rates_that_it_is_not_defined_for) {
    const ScratchFolder folder;
    const auto file = write_sound(folder / "slow.wav", noise(100, 0.5), 100);
    AudioStore store;
    const auto loudness =
        measure_loudness(store, file, {0, 100}, GainCurve(), LoudnessRequest::momentary_only());
    ASSERT_FALSE(loudness);
    EXPECT_NE(loudness.error().message.find("100 Hz"), std::string::npos);
}

} // namespace
} // namespace headless::test
