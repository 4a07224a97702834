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
    for (const std::size_t channels : {1U, 2U, 3U}) {
        const auto source = noise(5000 * channels, 0.9);
        for (const std::int64_t first_frame : {-500, 0, 1, 1023, 2500}) {
            std::vector<float> heard(source.size());
            curve.apply(first_frame, 8000, static_cast<int>(channels), source, heard);
            for (std::size_t i = 0; i < source.size(); ++i) {
                const std::int64_t frame = first_frame + static_cast<std::int64_t>(i / channels);
                double gain = 0.0;
                curve.evaluate(frame, 8000, {&gain, 1});
                ASSERT_NEAR(gain, 2.0 * envelope.value_at(0.03 + static_cast<double>(frame) / 8000), 1e-9);
                ASSERT_FLOAT_EQ(heard[i], static_cast<float>(source[i] * gain)) << frame;
            }
        }
    }
}

TEST_F(Render, AppliesTheEnvelopeWithoutClipping) {
    const auto samples = noise(60000, 0.9);
    const project::Envelope envelope = dense_envelope();
    for (const int rate : {8000, 11025, 44100, 192000}) {
        SCOPED_TRACE(rate);
        const auto source = write_sound(folder / "source.wav", samples, rate, 3);
        const auto format =
            test::render_published(cache, source, {-10, 20020}, audio::GainCurve(envelope, 0.01, 2.0), target,
                                   ExistingFile::replace);
        EXPECT_EQ(format, (audio::AudioFormat{rate, 3, 20020}));
        EXPECT_EQ(cache.format(target), (audio::AudioFormat{rate, 3, 20020}));
        const auto rendered = read_sound(target).samples;
        for (std::size_t i = 0; i < 60060; ++i) {
            const std::size_t frame = i / 3;
            const double gain = envelope.value_at(0.01 + static_cast<double>(frame) / rate) * 2.0;
            const double heard = i >= 30 && i < 60030 ? samples[i - 30] * gain : 0.0;
            ASSERT_NEAR(rendered[i], heard, 1e-6) << i;
        }
        EXPECT_GT(*std::ranges::max_element(rendered), 2.0F);
    }
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
