#include "headless/audio/loudness.hpp"
#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <ebur128.h>

namespace headless::test {
namespace {

Result<audio::Loudness>
measure(const std::vector<float>& samples, int sample_rate, int channels,
        const audio::LoudnessRequest& request = audio::LoudnessRequest::everything()) {
    const ScratchFolder folder;
    const auto file = write_sound(folder / "sound.wav", samples, sample_rate, channels);
    audio::AudioCache cache;
    const auto frames = static_cast<std::int64_t>(samples.size()) / channels;
    return audio::measure_loudness(cache, file, {0, frames}, audio::GainCurve(), request);
}

audio::PlacedReading momentary(const std::vector<float>& samples, int sample_rate, int channels) {
    const auto loudness = measure(samples, sample_rate, channels, audio::LoudnessRequest::momentary_only());
    return loudness.value().momentary_maximum_lufs.value();
}

double peak_of_dbfs(double level_db) { return std::pow(10.0, level_db / 20.0); }

class LoudnessAtRate : public testing::TestWithParam<int> {};

// EBU Tech 3341, minimum requirement test 13: file i holds a stereo 1 kHz tone of 0.4 s at -23 dBFS, i * 20
// ms late.
TEST_P(LoudnessAtRate, FindsATone) {
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
TEST_P(LoudnessAtRate, FindsTheLoudestTone) {
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
audio::PlacedReading library_maximum(const std::vector<float>& samples, int rate, int window_hops,
                                     int (*ask)(ebur128_state*, double*)) {
    ebur128_state* state = ebur128_init(1, static_cast<unsigned long>(rate), EBUR128_MODE_S);
    audio::PlacedReading maximum{-HUGE_VAL, 0.0};
    std::int64_t fed = 0;
    for (int hop = 1; hop <= 600; ++hop) {
        const std::int64_t border = std::llround(hop * rate / 100.0);
        ebur128_add_frames_float(state, samples.data() + fed, static_cast<std::size_t>(border - fed));
        fed = border;
        double value = 0.0;
        ask(state, &value);
        if (hop >= window_hops && value > maximum.value)
            maximum = {value, (hop - window_hops) * 0.01};
    }
    ebur128_destroy(&state);
    return maximum;
}

void expect_equal(const audio::PlacedReading& found, const audio::PlacedReading& expected) {
    EXPECT_NEAR(found.value, expected.value, 1e-9);
    EXPECT_NEAR(found.position_seconds, expected.position_seconds, 1e-9);
}

TEST(Loudness, FindsTheMaximaOfAllWindows) {
    for (const int rate : {8000, 11025, 22050, 44056, 48000}) {
        SCOPED_TRACE(rate);
        std::vector<float> samples;
        for (int i = 0; i < 60; ++i) {
            samples = std::move(samples) +
                      noise(static_cast<std::size_t>(rate) / 10 + 1, 0.5 + 0.4 * std::sin(i * i));
        }
        const auto maxima = measure(samples, rate, 1).value();
        const auto expected = library_maximum(samples, rate, 40, ebur128_loudness_momentary);
        expect_equal(maxima.momentary_maximum_lufs.value(), expected);
        expect_equal(momentary(samples, rate, 1), expected);
        expect_equal(maxima.short_term_maximum_lufs.value(),
                     library_maximum(samples, rate, 300, ebur128_loudness_shortterm));
    }
}

// EBU Tech 3341 tests 1 and 12, and EBU Tech 3342 test 1, shortened.
TEST(Loudness, MeasuresThePublishedValues) {
    const auto steady = measure(tone(20.0, peak_of_dbfs(-23), 48000, 2), 48000, 2).value();
    EXPECT_NEAR(steady.integrated_lufs.value(), -23.0, 0.1);
    EXPECT_NEAR(steady.short_term_maximum_lufs.value().value, -23.0, 0.1);
    EXPECT_NEAR(steady.true_peak_dbtp.value().value, -23.0, 0.2);
    const auto stepped =
        measure(tone(20.0, peak_of_dbfs(-20), 48000, 2) + tone(20.0, peak_of_dbfs(-30), 48000, 2), 48000, 2);
    EXPECT_NEAR(stepped.value().loudness_range_lu.value(), 10.0, 1.0);
}

TEST(Loudness, ReadsOneWindowEvery400MillisecondsCoarsely) {
    const auto samples = silence(0.2, 48000) + tone(0.4, 0.1, 48000) + silence(0.6, 48000);
    const auto coarse = measure(samples, 48000, 1, {.momentary_maximum = true, .hop_milliseconds = 400});
    EXPECT_NEAR(coarse.value().momentary_maximum_lufs->value, momentary(samples, 48000, 1).value - 3.01,
                0.05);
}

TEST(Loudness, GivesReadingsThatTheLengthAllows) {
    for (const double seconds : {0.399, 0.4, 2.999, 3.0}) {
        SCOPED_TRACE(seconds);
        const auto loudness = measure(silence(seconds, 44100), 44100, 1).value();
        EXPECT_EQ(loudness.momentary_maximum_lufs.has_value(), seconds >= 0.4);
        EXPECT_EQ(loudness.momentary_maximum_lufs.value_or(audio::PlacedReading{-HUGE_VAL, 0.0}).value,
                  -HUGE_VAL);
        EXPECT_EQ(loudness.integrated_lufs, seconds >= 0.4 ? std::optional(-HUGE_VAL) : std::nullopt);
        EXPECT_EQ(loudness.short_term_maximum_lufs.has_value(), seconds >= 3.0);
        EXPECT_EQ(loudness.loudness_range_lu.has_value(), seconds >= 3.0);
        EXPECT_EQ(loudness.true_peak_dbtp.value().value, -HUGE_VAL);
    }
}

TEST(Loudness, LocatesTheTruePeak) {
    auto samples = tone(1.0, 0.1, 48000);
    samples[36000] = 0.9F;
    const auto true_peak = measure(samples, 48000, 1, {.true_peak = true})->true_peak_dbtp.value();
    EXPECT_NEAR(true_peak.position_seconds, 0.75, 0.0101);
    EXPECT_GT(true_peak.value, -1.0);
}

TEST(Loudness, FailsAtUndefinedRates) {
    EXPECT_THAT(measure(noise(100, 0.5), 100, 1, audio::LoudnessRequest::momentary_only()),
                fails_telling("100 Hz"));
}

} // namespace
} // namespace headless::test
