#include "headless/workstation/take_audio.hpp"
#include "tests/headless/workstation/host_fixture.hpp"

namespace headless {
namespace {

class AccessorFunctions : public HostTest {
protected:
    static MediaItem_Take* handle(project::Take& take) { return workstation::Workstation::handle(take); }

    AudioAccessor* of_take(project::Take& take) {
        return function<AudioAccessor*(MediaItem_Take*)>("CreateTakeAudioAccessor")(handle(take));
    }
    AudioAccessor* of_track(project::Track& track) {
        return function<AudioAccessor*(MediaTrack*)>("CreateTrackAudioAccessor")(
            workstation::Workstation::handle(track));
    }
    template <class R>
    R ask(const char* name, AudioAccessor* accessor) {
        return function<R(AudioAccessor*)>(name)(accessor);
    }

    /// Samples, and before them the function's result.
    std::vector<double> read(AudioAccessor* accessor, int rate, int channels, double start, int frames) {
        std::vector<double> samples(static_cast<std::size_t>(channels * frames), 9.0);
        const int result = function<int(AudioAccessor*, int, int, double, int, double*)>(
            "GetAudioAccessorSamples")(accessor, rate, channels, start, frames, samples.data());
        samples.insert(samples.begin(), result);
        return samples;
    }
};

constexpr double frame = 1.0 / 8000.0; // seconds

TEST_F(AccessorFunctions, TakesAreReadAsTheirSourceIsPlayed) {
    project::Item& item = insert_item({0.125F, 0.25F, 0.5F, 0.75F}, 10.0);
    project::Take& take = *item.active_take();
    take.volume = item.volume = 0.5;
    take.add_envelope("Volume").set_points({{0.0, 0.0}});
    take.start_offset_seconds = frame;
    AudioAccessor* accessor = of_take(take);
    EXPECT_EQ(ask<double>("GetAudioAccessorStartTime", accessor), 0.0);
    EXPECT_EQ(ask<double>("GetAudioAccessorEndTime", accessor), 4 * frame);
    EXPECT_THAT(read(accessor, 8000, 1, -frame, 6), ElementsAre(1, 0, 0.25, 0.5, 0.75, 0, 0));
    EXPECT_THAT(read(accessor, 8000, 3, 2 * frame, 1), ElementsAre(1, 0.75, 0.75, 0)) << "mono in stereo";
    EXPECT_THAT(read(accessor, 8000, 1, 4 * frame, 2), ElementsAre(0, 0, 0)) << "past the item";
    EXPECT_THAT(read(accessor, 0, 1, 0.0, 1), ElementsAre(-1, 9));
    take.channel_mode = 3;
    take.source = {.file = test::write_sound(folder / "stereo.wav", {0.5F, -0.5F, 1.0F, -1.0F}, 8000, 2)};
    EXPECT_THAT(read(accessor, 8000, 2, 0.0, 1), ElementsAre(1, 1, 1)) << "what the take has become";
    take.channel_mode = 0;
    EXPECT_THAT(read(accessor, 8000, 1, 0.0, 1), ElementsAre(1, 1)) << "the first of its channels";

    std::filesystem::remove(take.source.file);
    EXPECT_THAT(read(accessor, 8000, 1, 0.0, 1), ElementsAre(-1, 0));
    project.erase_track(item.track());
    EXPECT_THAT(read(accessor, 8000, 1, 0.0, 1), ElementsAre(-1, 0));
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("stereo.wav"), tells("is gone")));
    function<void(AudioAccessor*)>("DestroyAudioAccessor")(accessor);
    EXPECT_THAT(read(accessor, 8000, 1, 0.0, 1), ElementsAre(0, 9)) << "no accessor any more";
}

TEST_F(AccessorFunctions, ResampleToAnyRate) {
    project::Item& item = insert_item(test::tone(1.0, 0.5, 8000, 1, 500.0));
    project::Take& take = *item.active_take();
    take.play_rate = 2.0;
    take.preserve_pitch = false;
    item.set_length_seconds(0.5);
    AudioAccessor* accessor = of_take(take);
    const auto samples = read(accessor, 44100, 1, 0.1, 4410);
    const auto expected = test::tone(0.1, 0.5, 44100, 1, 1000.0); // 0.1 s are whole periods
    for (std::size_t i = 0; i < expected.size(); ++i)
        ASSERT_NEAR(samples[i + 1], expected[i], 2e-5) << i;
    EXPECT_THAT(read(accessor, 44100, 1, 0.1 + 1000 / 44100.0, 1), ElementsAre(1, samples[1001]))
        << "the same wherever a read starts";
}

TEST_F(AccessorFunctions, TracksAreTheSumOfTheirItems) {
    project::Item& first = insert_item(std::vector<float>(8, 0.5F), 1.0);
    project::Track& track = first.track();
    const auto stereo = test::write_sound(folder / "stereo.wav", {0.25F, 1.0F, 0.25F, 1.0F}, 8000, 2);
    project::Item& second = **workstation.insert_audio(track, stereo, 1.0 + 6 * frame);
    AudioAccessor* accessor = of_track(track);
    EXPECT_EQ(ask<double>("GetAudioAccessorStartTime", accessor), 1.0);
    EXPECT_DOUBLE_EQ(ask<double>("GetAudioAccessorEndTime", accessor), 1.0 + 8 * frame);
    first.volume = 0.5;
    first.active_take()->volume = 2.0;
    first.active_take()->add_envelope("Volume").set_points({{0.0, 1.0}, {7 * frame, 1.0}, {7 * frame, 0.5}});
    second.active_take()->pan = 0.5;
    EXPECT_THAT(read(accessor, 8000, 2, 1.0 + 5 * frame, 4),
                ElementsAre(1, 0.5, 0.5, 0.625, 1.5, 0.375, 1.25, 0, 0));
    first.mute = true;
    EXPECT_THAT(read(accessor, 8000, 2, 1.0 + 6 * frame, 1), ElementsAre(1, 0.125, 1.0));
    EXPECT_THAT(read(accessor, 8000, 2, 1.0, 1), ElementsAre(0, 0, 0));
}

TEST_F(AccessorFunctions, NoticeChanges) {
    project::Item& item = insert_item();
    AudioAccessor* take = of_take(*item.active_take());
    AudioAccessor* track = of_track(item.track());
    const auto changed = [&] {
        return std::pair(ask<bool>("AudioAccessorStateChanged", take),
                         ask<bool>("AudioAccessorStateChanged", track));
    };
    EXPECT_EQ(changed(), std::pair(false, false));
    item.volume = 0.5;
    EXPECT_EQ(changed(), std::pair(false, true)) << "a take is read without volume";
    item.set_length_seconds(0.05);
    EXPECT_EQ(changed(), std::pair(true, true));
    EXPECT_TRUE(ask<bool>("AudioAccessorValidateState", take));
    ask<void>("AudioAccessorUpdate", track);
    EXPECT_EQ(changed(), std::pair(false, false));
    EXPECT_FALSE(ask<bool>("AudioAccessorValidateState", take));
}

TEST_F(AccessorFunctions, AreRefusedForWhatCannotBeRead) {
    project::Take& take = *insert_item().active_take();
    take.pitch_semitones = 1.0;
    EXPECT_EQ(of_take(take), nullptr);
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("'line.wav': a pitch shift")));
    EXPECT_THAT(read(of_track(take.item().track()), 8000, 1, 0.0, 1), ElementsAre(-1, 0));
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("'line.wav': a pitch shift")));
    take.source = {.file = {}, .type = "MIDI"};
    EXPECT_EQ(of_take(take), nullptr);
    EXPECT_THAT(workstation.take_failures(), testing::IsEmpty());
}

} // namespace
} // namespace headless
