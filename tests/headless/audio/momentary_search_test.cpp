#include "headless/audio/momentary_search.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <gtest/gtest.h>

namespace headless::test {
namespace {

template <class Meter>
audio::PlacedReading momentary_maximum(Result<Meter> meter, const std::vector<float>& samples) {
    meter->process(samples);
    return meter->readings().momentary_maximum_lufs.value();
}

/// Bursts of every colour and level between stretches of near silence: what a bound on the weighting gets
/// wrong when it is too low for any frequency, or blind to what is cut or still rings.
std::vector<float> bursts(int rate, int channels) {
    std::vector<float> samples;
    for (int i = rate + channels; i < rate + channels + 40; ++i) {
        const double peak = std::pow(10.0, -2.0 * std::abs(std::sin(i)));
        const double hertz = std::min(25.0 * std::pow(2.0, i * 7 % 10), 0.45 * rate);
        const auto count =
            static_cast<std::size_t>(rate) / 20 * static_cast<std::size_t>((1 + i % 9) * channels);
        samples = std::move(samples) + noise(count, i % 3 == 0 ? peak : peak * 1e-3) +
                  tone(0.03 * (i % 11), peak, rate, channels, hertz);
        samples.back() = i % 5 == 0 ? 1.0F : 0.0F; // a click
    }
    return samples;
}

TEST(MomentarySearch, FindsWhatAFullMeasurementFinds) {
    for (const int rate : {4000, 8000, 11025, 44100, 48000, 192000}) {
        for (const int channels : {1, 2, 6}) {
            SCOPED_TRACE(testing::Message() << rate << " Hz, " << channels << " channels");
            const auto samples = bursts(rate, channels);
            const auto found = momentary_maximum(audio::MomentarySearch::create(rate, channels), samples);
            const auto expected = momentary_maximum(
                audio::LoudnessMeter::create(rate, channels, audio::LoudnessRequest::momentary_only()),
                samples);
            EXPECT_NEAR(found.value, expected.value, 1e-6);
            EXPECT_EQ(found.position_seconds, expected.position_seconds);
        }
    }
}

} // namespace
} // namespace headless::test
