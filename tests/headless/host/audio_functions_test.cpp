#include "tests/headless/host/host_fixture.hpp"

#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <numbers>

namespace headless {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;

using PeaksFunction = int(MediaItem_Take*, double, double, int, int, int, double*);
using LoudnessFunction = bool(MediaItem_Take*, bool, double*, double*, double*, double*, double*, double*,
                              double*, double*);

class AudioFunctions : public HostTest {
protected:
    /// One sample a peak interval of 1 ms: 0.00, 0.01, 0.02, ... on the left, its negative on the right.
    Item& insert_ramp() {
        Recording ramp{1000, 2, {}};
        for (int frame = 0; frame < 100; ++frame) {
            ramp.samples.push_back(static_cast<float>(frame) / 100.0F);
            ramp.samples.push_back(static_cast<float>(-frame) / 100.0F);
        }
        Track& track = workstation.project().insert_track(0);
        return **workstation.insert_audio(track, write_recording("ramp.wav", ramp), 5.0);
    }
};

TEST_F(AudioFunctions, place_peaks_by_project_time_within_the_file) {
    Item& item = insert_ramp();
    item.active_take()->start_offset_seconds = 0.01;
    item.active_take()->volume = 0.5; // peaks are those of the file
    std::array<double, 6> buffer{};
    EXPECT_EQ(call<PeaksFunction>("GetMediaItemTake_Peaks", Workstation::handle(*item.active_take()), 1000.0,
                                  5.02, 1, 3, 115, buffer.data()),
              3);
    const auto near = [](double value) { return DoubleNear(value, 1e-6); };
    EXPECT_THAT(buffer,
                ElementsAre(near(0.30), near(0.31), near(0.32), near(-0.30), near(-0.31), near(-0.32)));
}

TEST_F(AudioFunctions, deliver_nothing_without_audio_or_room) {
    Item& item = insert_ramp();
    double value = 7.0;
    MediaItem_Take* take = Workstation::handle(*item.active_take());
    EXPECT_EQ(call<PeaksFunction>("GetMediaItemTake_Peaks", take, 1000.0, 5.0, 1, 0, 115, &value), 0);
    EXPECT_TRUE(workstation.take_failures().empty());
    item.active_take()->play_rate = 0.5;
    EXPECT_EQ(call<PeaksFunction>("GetMediaItemTake_Peaks", take, 1000.0, 5.0, 1, 1, 115, &value), 0);
    EXPECT_EQ(value, 7.0);
    EXPECT_EQ(workstation.take_failures().size(), 1U);
}

TEST_F(AudioFunctions, measure_loudness_as_heard_and_in_project_time) {
    // 1 s of silence, then a 1 kHz sine of -20 dBFS: one channel of it reads -23.01 LUFS.
    constexpr int rate = 48000;
    Recording tone{rate, 1, std::vector<float>(static_cast<std::size_t>(2 * rate), 0.0F)};
    for (int frame = rate; frame < 2 * rate; ++frame) {
        tone.samples[static_cast<std::size_t>(frame)] =
            static_cast<float>(0.1 * std::sin(2.0 * std::numbers::pi * 1000.0 * frame / rate));
    }
    Track& track = workstation.project().insert_track(0);
    Item& item = **workstation.insert_audio(track, write_recording("tone.wav", tone), 100.0);
    item.volume = 0.5;
    item.active_take()->volume = 0.5;
    double momentary = 0.0;
    double position = 0.0;
    MediaItem_Take* take = Workstation::handle(*item.active_take());
    ASSERT_TRUE(call<LoudnessFunction>("NF_AnalyzeTakeLoudness2", take, false, nullptr, nullptr, nullptr,
                                       nullptr, nullptr, &momentary, nullptr, &position));
    EXPECT_NEAR(momentary, -23.01 - 12.04, 0.1);
    EXPECT_GE(position, 100.9);
    EXPECT_LE(position, 101.61);

    item.set_length_seconds(0.3);
    EXPECT_FALSE(call<LoudnessFunction>("NF_AnalyzeTakeLoudness2", take, false, nullptr, nullptr, nullptr,
                                        nullptr, nullptr, &momentary, nullptr, &position));
    EXPECT_THAT(workstation.take_failures().at(0).message, testing::HasSubstr("too short"));
}

} // namespace
} // namespace headless
