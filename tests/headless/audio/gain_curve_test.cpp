#include "headless/audio/gain_curve.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace headless {
namespace {

constexpr PointShape linear = PointShape::linear;

Envelope dense_envelope() {
    std::vector<EnvelopePoint> points;
    for (int i = 0; i < 400; ++i) {
        const double position = 0.05 + 0.01 * i + (i % 7) * 0.001;
        const auto shape = i % 50 == 0 ? static_cast<PointShape>(i / 50 % 6) : linear;
        points.push_back({position, 0.5 + 0.4 * std::sin(i), shape, false, 0.3});
    }
    points.push_back({2.0, 0.1});
    points.push_back({2.0, 1.9}); // a step
    Envelope envelope("Volume");
    envelope.set_points(points);
    return envelope;
}

class GainCurveAtRate : public testing::TestWithParam<int> {};

TEST_P(GainCurveAtRate, has_the_envelopes_value_at_each_frame_wherever_blocks_begin) {
    const int sample_rate = GetParam();
    const Envelope envelope = dense_envelope();
    const GainCurve curve(envelope, 0.033, 0.7);
    std::vector<double> gains(static_cast<std::size_t>(5 * sample_rate));
    std::size_t block = 1;
    for (std::size_t begin = 0; begin < gains.size(); begin += block) {
        block = std::min(block * 7 % 3001, gains.size() - begin);
        curve.evaluate(static_cast<std::int64_t>(begin), sample_rate, std::span(gains).subspan(begin, block));
    }
    for (std::size_t i = 0; i < gains.size(); ++i) {
        const double seconds = 0.033 + static_cast<double>(i) / sample_rate;
        ASSERT_NEAR(gains[i], envelope.value_at(seconds) * 0.7, 1e-12) << "frame " << i;
    }
}

INSTANTIATE_TEST_SUITE_P(GainCurve, GainCurveAtRate, testing::Values(8000, 11025, 44100, 192000));

TEST(GainCurve, is_the_factor_alone_without_points) {
    std::vector<double> gains(3);
    GainCurve(Envelope("Volume"), 0.0, 0.25).evaluate(7, 8000, gains);
    EXPECT_EQ(gains, (std::vector{0.25, 0.25, 0.25}));
    GainCurve().evaluate(7, 8000, gains);
    EXPECT_EQ(gains, (std::vector{1.0, 1.0, 1.0}));
}

TEST(GainCurve, multiplies_every_channel_of_a_frame_by_the_frames_gain) {
    Envelope envelope("Volume");
    envelope.set_points({{0.0, 0.0}, {4.0, 4.0}});
    const GainCurve curve(envelope, 1.0);
    std::vector<float> samples{1.0F, -1.0F, 1.0F, 0.5F};
    curve.apply(1, 1, 2, samples, samples); // one frame a second, from the second frame on
    EXPECT_EQ(samples, (std::vector{2.0F, -2.0F, 3.0F, 1.5F}));
}

} // namespace
} // namespace headless
