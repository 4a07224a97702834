#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/published_render.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <algorithm>
#include <csignal>
#include <sys/resource.h>

namespace headless::test {
namespace {

using testing::ElementsAre;

struct Render : testing::Test {
    ScratchFolder folder;
    audio::AudioCache cache;
    std::filesystem::path target = folder / "target.wav";
};

/// Points closer than blocks, of every shape, many of them on a frame.
project::Envelope dense_envelope() {
    std::vector<project::EnvelopePoint> points{{0.3, 0.1}, {0.3, 4.0}};
    for (int i = 0; i < 400; ++i) {
        const auto shape =
            i % 2 == 0 ? static_cast<project::PointShape>(i / 2 % 6) : project::PointShape::linear;
        points.push_back({0.03 + 0.001 * i + (i % 3) * 1e-4, 1.5 + std::sin(i), shape, false, 0.3});
    }
    project::Envelope envelope("Volume");
    envelope.set_points(points);
    return envelope;
}

TEST(GainCurve, IsTheSameForAllBlockStarts) {
    const project::Envelope envelope = dense_envelope();
    const audio::GainCurve curve(envelope, 0.03, 2.0);
    for (const auto& [rate, channels] : {std::pair{8000, 1}, {11025, 2}, {44100, 3}, {192000, 3}}) {
        const auto width = static_cast<std::size_t>(channels);
        const auto source = noise(20000 * width, 0.9);
        for (const std::int64_t first_frame : {-500, 0, 1, 1023, 2500}) {
            std::vector<float> heard(source.size());
            curve.apply(first_frame, rate, channels, source, heard);
            for (std::size_t i = 0; i < source.size(); ++i) {
                const std::int64_t frame = first_frame + static_cast<std::int64_t>(i / width);
                double gain = 0.0;
                curve.evaluate(frame, rate, {&gain, 1});
                ASSERT_NEAR(gain, 2.0 * envelope.value_at(0.03 + static_cast<double>(frame) / rate), 1e-9);
                ASSERT_FLOAT_EQ(heard[i], static_cast<float>(source[i] * gain)) << frame;
            }
        }
    }
}

TEST(GainCurve, FadesRiseAndFall) {
    using enum audio::Fade::Shape;
    const std::pair<audio::Fade::Shape, std::vector<double>> shapes[] = {
        {linear, {0, 0.25, 0.5, 0.75, 1}},
        {fast_quadratic, {0, 0.4375, 0.75, 0.9375, 1}},
        {slow_quadratic, {0, 0.0625, 0.25, 0.5625, 1}},
        {fast_quartic, {0, 0.68359375, 0.9375, 0.99609375, 1}},
        {slow_quartic, {0, 0.00390625, 0.0625, 0.31640625, 1}},
        {cosine_s, {0, 0.14644661, 0.5, 0.85355339, 1}},
        {quartic_s, {0, 0.03125, 0.5, 0.96875, 1}}};
    for (auto [shape, expected] : shapes) {
        audio::GainCurve curve(2.0);
        curve.add({.length_seconds = 1.0, .shape = shape});
        curve.add({.start_seconds = 2.0, .length_seconds = 1.0, .shape = shape, .is_fall = true});
        EXPECT_FALSE(curve.constant());
        std::vector<double> gains(13);
        curve.evaluate(0, 4, gains);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_NEAR(gains[i], 2.0 * expected[i], 1e-8);
            EXPECT_NEAR(gains[12 - i], 2.0 * expected[i], 1e-8);
        }
    }
}

TEST_F(Render, AppliesTheEnvelopeWithoutClipping) {
    const auto source = write_sound(folder / "source.wav", noise(60000, 0.9), 44100, 3);
    const audio::GainCurve curve(dense_envelope(), 0.01, 2.0);
    auto heard = std::vector<float>(30) + noise(60000, 0.9) + std::vector<float>(30);
    curve.apply(0, 44100, 3, heard, heard); // from the first frame that is rendered
    const audio::AudioFormat format{44100, 3, 20020};
    EXPECT_EQ(test::render_published(cache, source, {-10, 20020}, curve, target), format);
    EXPECT_EQ(cache.format(target), format);
    const auto rendered = read_sound(target).samples;
    EXPECT_THAT(rendered, testing::Pointwise(testing::FloatNear(1e-6F), heard));
    EXPECT_GT(*std::ranges::max_element(rendered), 2.0F);
}

TEST_F(Render, IsReproducibleAndMarked) {
    const auto source =
        write_sound(folder / "source.flac", noise(40000, 0.9), 8000, 1, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    audio::AudioCache streaming(0);
    ASSERT_TRUE(
        test::render_published(cache, source, {0, 40000}, audio::GainCurve(0.3), folder / "first.wav"));
    ASSERT_TRUE(
        test::render_published(streaming, source, {0, 40000}, audio::GainCurve(0.3), folder / "second.wav"));
    EXPECT_EQ(bytes_of(folder / "first.wav"), bytes_of(folder / "second.wav"));
    EXPECT_EQ(bytes_of(folder / "first.wav").find("PEAK"), std::string::npos) << "it holds the time";
    EXPECT_EQ(audio::is_own_file(folder / "first.wav"), true);
    EXPECT_EQ(audio::is_own_file(source), false);
}

// Writing past the limit fails as on a full disk.
TEST_F(Render, LeavesNothingBehindOnFailure) {
    const auto source = write_sound(folder / "source.wav", noise(50000, 0.5), 8000);
    EXPECT_THAT(test::render_published(cache, source, {0, 1}, audio::GainCurve(), folder / "none/target.wav"),
                fails_telling("none/target.wav: No such file"));
    EXPECT_FALSE(test::render_published(cache, folder / "missing.wav", {0, 1}, audio::GainCurve(), target));
    EXPECT_FALSE(test::render_published(cache, source, {0, 0}, audio::GainCurve(), target));
    rlimit whole{};
    getrlimit(RLIMIT_FSIZE, &whole);
    const rlimit small{100000, whole.rlim_max};
    const auto old_handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const auto rendered = test::render_published(cache, source, {0, 50000}, audio::GainCurve(), target);
    setrlimit(RLIMIT_FSIZE, &whole);
    std::signal(SIGXFSZ, old_handler);
    EXPECT_THAT(rendered, fails_telling("File too large"));
    EXPECT_THAT(names_in(folder.path), ElementsAre("source.wav"));
}

} // namespace
} // namespace headless::test
