#include "headless/audio/loudness.hpp"
#include "headless/workstation/take_loudness.hpp"
#include "tests/headless/workstation/host_fixture.hpp"

namespace headless {
namespace {

using AudioFunctions = HostTest;

TEST_F(AudioFunctions, LoudnessIsMeasuredAsHeard) {
    using test::operator+;
    project::Item& item = insert_item(test::silence(3.0, 8000) + test::tone(1.0, 0.1, 8000), 100.0);
    item.volume = 0.5;
    item.active_take()->volume = 0.5;
    project::Envelope& envelope = item.active_take()->add_envelope("Volume");
    envelope.set_points({{0.0, 0.1}, {3.5, 0.1}, {3.5, 1.0}}); // leaves one window as it was
    double momentary_lufs = 0.0;
    double position_seconds = 0.0;
    const auto measure = [&] {
        return function<bool(MediaItem_Take*, bool, double*, double*, double*, double*, double*, double*,
                             double*, double*)>("NF_AnalyzeTakeLoudness2")(
            workstation::Workstation::handle(*item.active_take()), false, nullptr, nullptr, nullptr, nullptr,
            nullptr, &momentary_lufs, nullptr, &position_seconds);
    };
    ASSERT_TRUE(measure());
    EXPECT_NEAR(momentary_lufs, -23.01 - 12.04, 0.1) << "a 1 kHz sine of -20 dBFS in one channel, quartered";
    EXPECT_NEAR(position_seconds, 103.55, 0.06);
    item.set_length_seconds(0.3);
    EXPECT_FALSE(measure());
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("too short")));
}

TEST_F(AudioFunctions, LevelledTakeMeasuresItsTarget) {
    using test::operator+;
    const auto speech = test::silence(0.2, 8000) + test::tone(0.4, 0.1, 8000) + test::silence(0.6, 8000);
    project::Item& item = insert_item(speech);
    const project::Take& take = *item.active_take();
    const auto heard = [&](audio::LoudnessRequest request) {
        return workstation::heard_loudness(workstation, take, request).value();
    };
    item.volume = 0.7;
    const double measured = heard(audio::LoudnessRequest::everything()).momentary_maximum_lufs->value;
    item.volume *= std::pow(10.0, (-31.5 - measured) / 20.0);
    EXPECT_NEAR(workstation::heard_momentary_maximum(workstation, take).value(), -31.5, 1e-9);
    const auto anew =
        audio::measure_loudness(workstation.audio(), take.source.file, {0, take.source.frames},
                                audio::GainCurve(item.volume), audio::LoudnessRequest::everything());
    EXPECT_NEAR(anew->momentary_maximum_lufs->value, -31.5, 1e-5);
    EXPECT_NEAR(heard(audio::LoudnessRequest::everything()).integrated_lufs.value(),
                anew->integrated_lufs.value(), 1e-9);

    workstation.loudness_hop_milliseconds = 400;
    EXPECT_NEAR(workstation::heard_momentary_maximum(workstation, take).value(), -31.5 - 3.01, 0.05);
    test::write_sound(take.source.file, test::tone(1.2, 0.2, 8000), 8000);
    EXPECT_NEAR(workstation::recorded_momentary_maximum(workstation, take.source.file).value(), -17.0, 0.1);
}

} // namespace
} // namespace headless
