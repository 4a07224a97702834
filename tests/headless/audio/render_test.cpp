#include "headless/audio/render.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>

namespace headless::test {
namespace {

std::vector<float> samples_of(const std::filesystem::path& file) {
    AudioStore store;
    std::vector<float> samples;
    const auto visit = [&](std::span<const float> block) -> Result<void> {
        samples.insert(samples.end(), block.begin(), block.end());
        return {};
    };
    EXPECT_TRUE(store.read(file, {0, store.format(file).value_or(AudioFormat{}).frames}, visit));
    return samples;
}

TEST(Render, writes_each_frame_times_its_gain_without_clipping) {
    const ScratchFolder folder;
    const auto samples = noise(40000, 0.9);
    const auto source = write_sound(folder / "source.wav", samples, 44100, 2);
    Envelope envelope("Volume");
    envelope.set_points({{0.0, 0.5}, {0.2, 4.0}, {0.4, 0.0}});
    AudioStore store;
    const auto format =
        render(store, source, {-10, 20020}, GainCurve(envelope, 0.01, 2.0), folder / "target.wav");
    EXPECT_EQ(format, (AudioFormat{44100, 2, 20020}));
    EXPECT_EQ(store.format(folder / "target.wav"), (AudioFormat{44100, 2, 20020}));
    const auto rendered = samples_of(folder / "target.wav");
    double loudest = 0.0;
    for (std::size_t frame = 0; frame < 20020; ++frame) {
        const double gain = envelope.value_at(0.01 + static_cast<double>(frame) / 44100) * 2.0;
        for (std::size_t channel = 0; channel < 2; ++channel) {
            const bool inside = frame >= 10 && frame < 20010;
            const double heard = inside ? samples[(frame - 10) * 2 + channel] * gain : 0.0;
            ASSERT_NEAR(rendered[frame * 2 + channel], heard, 1e-6) << frame;
            loudest = std::max(loudest, std::abs(heard));
        }
    }
    EXPECT_GT(loudest, 2.0);
}

TEST(Render, gives_the_same_bytes_for_the_same_input_and_marks_them_as_its_own) {
    const ScratchFolder folder;
    const auto source =
        write_sound(folder / "source.flac", noise(40000, 0.9), 8000, 1, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    AudioStore roomy;
    AudioStore streaming(0);
    ASSERT_TRUE(render(roomy, source, {0, 40000}, GainCurve(0.3), folder / "first.wav"));
    ASSERT_TRUE(render(streaming, source, {0, 40000}, GainCurve(0.3), folder / "second.wav"));
    EXPECT_EQ(bytes_of(folder / "first.wav"), bytes_of(folder / "second.wav"));
    EXPECT_EQ(bytes_of(folder / "first.wav").find("PEAK"), std::string::npos);
    EXPECT_TRUE(is_own_file(folder / "first.wav"));
    EXPECT_FALSE(is_own_file(source));
    EXPECT_FALSE(is_own_file(folder / "missing.wav"));
}

TEST(Render, replaces_an_existing_file_only_when_told_to) {
    const ScratchFolder folder;
    const auto source = write_sound(folder / "source.wav", {0.5F, 0.25F}, 8000);
    write_bytes(folder / "target.wav", "precious");
    AudioStore store;
    const auto refused = render(store, source, {0, 2}, GainCurve(), folder / "target.wav");
    ASSERT_FALSE(refused);
    EXPECT_NE(refused.error().message.find((folder / "target.wav").string()), std::string::npos);
    EXPECT_EQ(bytes_of(folder / "target.wav"), "precious");
    EXPECT_TRUE(render(store, source, {0, 2}, GainCurve(), folder / "target.wav", ExistingFile::replace));
    EXPECT_EQ(samples_of(folder / "target.wav"), (std::vector{0.5F, 0.25F}));
    EXPECT_EQ(folder.entry_count(), 2U);
}

TEST(Render, leaves_nothing_behind_when_it_fails) {
    const ScratchFolder folder;
    const auto source = write_sound(folder / "source.wav", {0.5F}, 8000);
    AudioStore store;
    const auto without_folder = render(store, source, {0, 1}, GainCurve(), folder / "none/target.wav");
    ASSERT_FALSE(without_folder);
    EXPECT_NE(without_folder.error().message.find("none/target.wav: No such file"), std::string::npos);
    EXPECT_FALSE(render(store, folder / "missing.wav", {0, 1}, GainCurve(), folder / "target.wav"));
    EXPECT_FALSE(render(store, source, {0, 0}, GainCurve(), folder / "target.wav"));
    EXPECT_EQ(folder.entry_count(), 1U);
}

// Writing past the limit fails as on a full disk.
TEST(Render, tells_of_a_full_disk_and_removes_what_it_wrote) {
    const ScratchFolder folder;
    const auto source = write_sound(folder / "source.wav", noise(50000, 0.5), 8000);
    AudioStore store;
    ASSERT_TRUE(store.read(source, {0, 1}, [](auto) -> Result<void> { return {}; }));
    rlimit whole{};
    getrlimit(RLIMIT_FSIZE, &whole);
    const rlimit small{100000, whole.rlim_max};
    const auto old_handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const auto rendered = render(store, source, {0, 50000}, GainCurve(), folder / "target.wav");
    setrlimit(RLIMIT_FSIZE, &whole);
    std::signal(SIGXFSZ, old_handler);
    ASSERT_FALSE(rendered);
    EXPECT_NE(rendered.error().message.find("target.wav"), std::string::npos);
    EXPECT_NE(rendered.error().message.find("File too large"), std::string::npos) << rendered.error().message;
    EXPECT_EQ(folder.entry_count(), 1U);
}

} // namespace
} // namespace headless::test
