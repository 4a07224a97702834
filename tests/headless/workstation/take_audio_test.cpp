#include "headless/audio/audio_cache.hpp"
#include "headless/chunk/parse.hpp"
#include "headless/workstation/take_audio.hpp"
#include "tests/headless/workstation/host_fixture.hpp"

namespace headless {
namespace {

constexpr double frame = 1.0 / 8000.0; // seconds

using project::Section;
using project::Source;

class TakeAudioTest : public HostTest {
protected:
    /// Plays a file of the values 1 to 8, two for each frame with two channels.
    project::Take& insert_take(int channels = 1) {
        const auto file = test::write_sound(folder / "line.wav", {1, 2, 3, 4, 5, 6, 7, 8}, 8000, channels);
        project::Track& track = project.insert_track(0);
        return *workstation.insert_audio(track, file, 0.0).value()->active_take();
    }

    static Source section_of(Source inner, Section section) {
        return {.file = {}, .type = "SECTION", .section = section, .inner = std::make_shared<Source>(inner)};
    }

    static chunk::Lines lines(const std::string& text) {
        return chunk::parse_block("<ITEM\n" + text + ">\n").value().lines;
    }

    std::vector<float> heard(const project::Take& take, int sample_rate = 0) {
        std::vector<float> samples;
        const auto collect = [&](std::span<const float> block) -> Result<void> {
            samples.insert(samples.end(), block.begin(), block.end());
            return {};
        };
        const auto audio = workstation::audio_of(workstation.audio(), take, sample_rate);
        EXPECT_TRUE(audio && audio->sound->read(audio->range, collect))
            << (audio ? "" : audio.error().message);
        return samples;
    }
};

TEST_F(TakeAudioTest, SectionsPlayTheirStretch) {
    const Section middle{2 * frame, 4 * frame}; // 3 4 5 6
    const Section backwards{2 * frame, 4 * frame, true};
    const struct {
        const char* name;
        std::vector<Section> sections; // the innermost first
        int offset;
        std::vector<float> heard;
    } cases[] = {
        {"forward", {middle}, -1, {0, 3, 4, 5, 6, 0}},
        {"reversed", {backwards}, -1, {0, 6, 5, 4, 3, 0}},
        {"to the end of the file", {{6 * frame}}, 0, {7, 8, 0}},
        {"beyond both ends of the file", {{-frame, 10 * frame, true}}, 0, {0, 8, 7, 6, 5, 4, 3, 2, 1, 0}},
        {"forward in a reversed one", {backwards, {frame, 2 * frame}}, 0, {5, 4, 0}},
        {"reversed in a reversed one", {backwards, {frame, 2 * frame, true}}, 0, {4, 5, 0}},
        {"longer than the one inside", {middle, {3 * frame, 3 * frame}}, 0, {6, 0, 0}},
        {"three deep", {middle, backwards, {0, 3 * frame, true}}, 0, {6, 0, 0}}};
    project::Take& take = insert_take();
    const Source file = take.source;
    for (const auto& [name, sections, offset, expected] : cases) {
        SCOPED_TRACE(name);
        take.source = file;
        for (const Section& section : sections)
            take.source = section_of(take.source, section);
        take.start_offset_seconds = offset * frame;
        take.item().set_length_seconds(static_cast<double>(expected.size()) * frame);
        EXPECT_EQ(heard(take), expected);
    }
}

TEST_F(TakeAudioTest, SourcesRepeatInLoopedItems) {
    project::Take& take = insert_take();
    const Source file = take.source;
    take.item().loop = true;
    take.item().set_length_seconds(12 * frame);
    take.start_offset_seconds = -2 * frame;
    EXPECT_EQ(heard(take), (std::vector<float>{7, 8, 1, 2, 3, 4, 5, 6, 7, 8, 1, 2}));
    take.source = section_of(file, {5 * frame, 3 * frame, true});
    take.start_offset_seconds = frame;
    EXPECT_EQ(heard(take), (std::vector<float>{7, 6, 8, 7, 6, 8, 7, 6, 8, 7, 6, 8}));
    take.source.section.overlap_seconds = 0.01;
    EXPECT_THAT(workstation::audio_of(workstation.audio(), take),
                fails_telling("'line.wav': a section that overlaps"));
    take.item().set_length_seconds(2 * frame);
    EXPECT_EQ(heard(take), (std::vector<float>{7, 6})) << "which does not repeat here";

    const auto long_file = test::noise(6'000'000, 0.5); // not kept in memory while it repeats
    const auto name = test::write_sound(folder / "long.wav", long_file, 8000);
    const auto item = workstation.insert_audio(*project.track(0), name, 0.0);
    (*item)->loop = true;
    (*item)->set_length_seconds(9'000'000 * frame);
    const auto samples = heard(*(*item)->active_take());
    EXPECT_TRUE(std::equal(long_file.begin(), long_file.begin() + 3'000'000, samples.begin() + 6'000'000));
}

TEST_F(TakeAudioTest, ChannelModesChooseChannels) {
    const struct {
        int channels;
        int mode;
        std::vector<float> heard; // of the first two frames
    } cases[] = {{1, 1, {1, 2}}, {1, 2, {1, 2}}, {1, 3, {1, 2}}, {2, 1, {2, 1, 4, 3}}, {2, 2, {1.5, 3.5}},
                 {2, 3, {1, 3}}, {2, 4, {2, 4}}, {4, 6, {4, 8}}, {4, 67, {1, 2, 5, 6}}};
    for (const auto& [channels, mode, expected] : cases) {
        SCOPED_TRACE(testing::Message() << channels << " channels in mode " << mode);
        project::Take& take = insert_take(channels);
        take.channel_mode = mode;
        take.item().set_length_seconds(2 * frame);
        EXPECT_EQ(heard(take), expected);
    }
    for (const auto& [channels, mode] :
         {std::pair{1, 4}, {2, 5}, {4, 1}, {4, 2}, {2, 68}, {1, 67}, {2, -1}}) {
        project::Take& take = insert_take(channels);
        take.channel_mode = mode;
        EXPECT_THAT(workstation::audio_of(workstation.audio(), take), fails_telling("channel mode"));
    }
}

// Far from the ends, since a speed changes what is near them.
TEST_F(TakeAudioTest, PlayRateMovesOffsetsRepetitionsAndEnvelopes) {
    const auto tone_at = [](double hertz) { return test::tone(1.0, 0.5, 8000, 1, hertz); };
    project::Item& item = insert_item(tone_at(500.0));
    project::Take& take = *item.active_take();
    take.preserve_pitch = false;
    for (const auto& [rate, hertz] : {std::pair{2.0, 1000.0}, {0.5, 250.0}, {1.25, 625.0}}) {
        SCOPED_TRACE(rate);
        take.play_rate = rate;
        take.start_offset_seconds = 0.08 * rate; // whole periods
        item.loop = true;
        const auto samples = heard(take);
        const auto expected = tone_at(hertz);
        ASSERT_EQ(samples.size(), expected.size());
        for (std::size_t i = 1000; i < 7000; ++i)
            ASSERT_NEAR(samples[i], expected[i], 2e-5) << i;
    }
    take.play_rate = 2.0;
    take.add_envelope("Volume").set_points({{0.0, 1.0}, {1.0, 0.0}});
    std::vector<double> gains(3);
    workstation::gain_of(take).evaluate(0, 4, gains);
    EXPECT_THAT(gains, ElementsAre(1.0, 0.5, 0.0));
}

TEST_F(TakeAudioTest, RefusesWhatItCannotPlay) {
    const struct {
        const char* told;
        void (*spoil)(project::Take&);
    } cases[] = {
        {"a play rate other than 1 with preserved pitch", [](project::Take& take) { take.play_rate = 0.5; }},
        {"a play rate beyond",
         [](project::Take& take) {
             take.play_rate = 1e9;
             take.preserve_pitch = false;
         }},
        {"a pitch shift", [](project::Take& take) { take.pitch_semitones = -1.0; }},
        {"a pitch envelope",
         [](project::Take& take) {
             take.add_envelope("Pitch").set_points({{0.0, 1.0}});
         }},
        {"stretching by markers", [](project::Take& take) { take.lines = lines("SM 0 0 + 1 2\n"); }},
        {"a source of type MIDI",
         [](project::Take& take) { take.source = Source{.file = {}, .type = "MIDI"}; }},
        {"media that is offline",
         [](project::Take& take) {
             take.source.offline = true;
             take.source = section_of(take.source, {});
         }},
        {"a mute envelope",
         [](project::Take& take) {
             take.add_envelope("Mute").set_points({{0.0, 0.0}});
         }},
        {"processing by effects",
         [](project::Take& take) { take.lines = lines("<TAKEFX\nBYPASS 1 0 0\nBYPASS 0 0 0\n>\n"); }}};
    for (const auto& [told, spoil] : cases) {
        project::Take& take = insert_take();
        EXPECT_THAT(workstation::unplayable(take), testing::IsEmpty());
        spoil(take);
        EXPECT_THAT(workstation::unplayable(take), testing::Contains(testing::HasSubstr(told)));
        EXPECT_THAT(workstation::heard_audio_of(workstation.audio(), take),
                    fails_telling("take 'line.wav': " + std::string(told)));
    }
    project::Take& take = insert_take();
    take.lines = lines("<TAKEFX\nBYPASS 0 0 0\n>\n");
    EXPECT_TRUE(workstation::audio_of(workstation.audio(), take)) << "what the effects are given";
    take.lines = lines("<TAKEFX\nBYPASS 1 0 0\n>\n");
    EXPECT_THAT(workstation::unplayable(take), testing::IsEmpty()) << "bypassed";
    take.source = Source{.file = {}, .type = "WAVE"};
    EXPECT_THAT(workstation::audio_of(workstation.audio(), take), fails_telling("has no audio file"));
}

} // namespace
} // namespace headless
