#include "headless/audio/loudness.hpp"
#include "headless/chunk/parse.hpp"
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

TEST_F(AudioFunctions, LevelsAreReadAsHeard) {
    std::vector<float> samples(8000, 0.125F);
    samples[2000] = -0.5F;
    project::Item& item = insert_item(samples, 100.0);
    item.volume = 2.0;
    item.active_take()->volume = -0.5;
    MediaItem* handle = workstation::Workstation::handle(item);
    double position_seconds = 9.0;
    const auto max_peak = function<double(MediaItem*, double*)>("NF_GetMediaItemMaxPeakAndMaxPeakPos");
    EXPECT_NEAR(max_peak(handle, &position_seconds), -6.0206, 1e-4);
    EXPECT_EQ(position_seconds, 0.25);
    const auto mean_level = function<double(MediaItem*)>("NF_GetMediaItemAverageRMS");
    EXPECT_NEAR(mean_level(handle), 10.0 * std::log10((7999.0 / 64.0 + 0.25) / 8000.0), 1e-6);
    item.block = std::make_unique<chunk::Block>(
        chunk::parse_block("<ITEM\nFADEIN 1 0.5 0 0 0 0 0\nFADEOUT 1 0.01 0.125 2 0 0 0\n>\n").value());
    EXPECT_NEAR(max_peak(handle, nullptr), -12.0412, 1e-4) << "halfway up a straight fade";
    const auto square = [](double power) { return 1.0 / (power + 1.0); }; // mean of the power of a rise
    const double mean = (0.5 * square(2.0) + 0.375 + 0.125 * square(4.0)) / 64.0;
    EXPECT_NEAR(mean_level(handle), 10.0 * std::log10(mean), 0.01) << "the automatic length wins";
    EXPECT_THAT(workstation.take_failures(), testing::IsEmpty());
    item.block->lines = chunk::parse_block("<ITEM\nFADEIN 1 0.5 0 0 0 0.3 0\n>\n")->lines;
    mean_level(handle);
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("how fades are bent")));
    item.volume = 0.0;
    EXPECT_EQ(mean_level(handle), -150.0);
    item.active_take()->source = {.file = {}, .type = "MIDI"};
    EXPECT_EQ(max_peak(handle, &position_seconds), -150.0);
    EXPECT_THAT(workstation.take_failures(), testing::IsEmpty());
    item.active_take()->source = {.file = folder / "missing.wav"};
    EXPECT_EQ(function<double(MediaItem*)>("NF_GetMediaItemMaxPeak")(handle), -150.0);
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("missing.wav")));
}

TEST_F(AudioFunctions, NormalizationGivesTheFactorToATarget) {
    using test::operator+;
    project::Item& item = insert_item(test::silence(4.0, 8000) + test::tone(4.0, 0.1, 8000));
    PCM_source* source = function<PCM_source*(MediaItem_Take*)>("GetMediaItemTake_Source")(
        workstation::Workstation::handle(*item.active_take()));
    const auto factor_db = [&](int target, double level, double start, double end) {
        return 20.0 * std::log10(function<double(PCM_source*, int, double, double, double)>(
                          "CalculateNormalization")(source, target, level, start, end));
    };
    constexpr double sine_lufs = -23.01; // a 1 kHz sine of -20 dBFS in one channel
    EXPECT_NEAR(factor_db(0, sine_lufs, 0.0, 0.0), 0.0, 0.2) << "silence is gated";
    EXPECT_NEAR(factor_db(1, -20.0, 4.0, 8.0), 3.01, 0.01);
    EXPECT_NEAR(factor_db(1, -20.0, 0.0, 0.0), 6.02, 0.01) << "half of it is silent";
    EXPECT_NEAR(factor_db(2, 0.0, 0.0, 0.0), 20.0, 0.01);
    EXPECT_NEAR(factor_db(3, 0.0, 0.0, 0.0), 20.0, 0.1);
    EXPECT_NEAR(factor_db(4, sine_lufs + 6.0, 0.0, 0.0), 6.0, 0.1);
    EXPECT_NEAR(factor_db(5, sine_lufs, 0.0, 0.0), 0.0, 0.1);
    EXPECT_EQ(factor_db(2, 0.0, 0.0, 3.0), 0.0) << "silence";
    EXPECT_THAT(workstation.take_failures(), testing::IsEmpty());
    EXPECT_EQ(factor_db(5, 0.0, 4.0, 6.0), 0.0);
    EXPECT_EQ(factor_db(6, 0.0, 0.0, 0.0), 0.0);
    EXPECT_THAT(workstation.take_failures(), ElementsAre(tells("too short"), tells("no way 6")));
}

TEST_F(AudioFunctions, PeaksFollowPlayRateAndSections) {
    std::vector<float> samples(8000, 0.25F);
    std::fill(samples.begin() + 4000, samples.begin() + 4400, 0.75F);
    project::Take& take = *insert_item(samples, 10.0).active_take();
    const auto peaks = [&] {
        std::vector<double> buffer(40); // maxima of 50 ms each, then minima
        const int count =
            function<int(MediaItem_Take*, double, double, int, int, int, double*)>("GetMediaItemTake_Peaks")(
                workstation::Workstation::handle(take), 20.0, 10.0, 1, 20, 0, buffer.data());
        return std::pair(count, std::ranges::max_element(buffer) - buffer.begin());
    };
    EXPECT_EQ(peaks(), std::pair(20, std::ptrdiff_t{10}));
    take.play_rate = 2.0;
    take.preserve_pitch = false;
    EXPECT_EQ(peaks(), std::pair(10, std::ptrdiff_t{5}));
    take.play_rate = 1.0;
    take.source = {.file = {},
                   .type = "SECTION",
                   .section = {0.25, 0.5, true},
                   .inner = std::make_shared<project::Source>(take.source)};
    EXPECT_EQ(peaks(), std::pair(10, std::ptrdiff_t{4}));
}

} // namespace
} // namespace headless
