#include "headless/project/project.hpp"
#include "headless/project/time_text.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace headless::project {
namespace {

struct TimeText : testing::Test {
    Project project; // 120 bpm, 4/4, 48 kHz

    std::string position(double seconds, RulerMode mode) const {
        return position_text(project, seconds, mode);
    }

    double parsed(const char* text, RulerMode mode) const { return parse_position(project, text, mode); }
};

TEST_F(TimeText, ShowsEachUnit) {
    project.frame_rate = 25.0;
    EXPECT_EQ(position(62.5, RulerMode::time), "1:02.500");
    EXPECT_EQ(position(3725.0004, RulerMode::time), "1:02:05.000");
    EXPECT_EQ(position(59.9996, RulerMode::time), "1:00.000");
    EXPECT_EQ(position(-0.25, RulerMode::time), "-0:00.250");
    EXPECT_EQ(position(62.625, RulerMode::beats), "32.2.25");
    EXPECT_EQ(position(62.625, RulerMode::beats_and_time), "32.2.25 / 1:02.625");
    EXPECT_EQ(position(62.5, RulerMode::seconds), "62.500");
    EXPECT_EQ(position(1.0, RulerMode::samples), "48000");
    EXPECT_EQ(position(3662.0 + 15.0 / 25.0, RulerMode::timecode), "01:01:02:15");
    EXPECT_EQ(position(-0.04, RulerMode::timecode), "-00:00:00:01");
    EXPECT_EQ(position(3.0, RulerMode::frames), "75");
    EXPECT_EQ(position(-0.5, RulerMode::beats), "0.4.00");
}

TEST_F(TimeText, AddsTheProjectsStart) {
    project.start_seconds = 3600.0;
    project.start_measure = -4;
    EXPECT_EQ(position(1.0, RulerMode::time), "1:00:01.000");
    EXPECT_EQ(position(1.0 - project.start_seconds, RulerMode::samples), "48000");
    EXPECT_EQ(position(0.0, RulerMode::beats_and_time), "-3.1.00 / 1:00:00.000");
    EXPECT_EQ(parsed("1:00:01", RulerMode::time), 1.0);
    EXPECT_EQ(parsed("1.1.00", RulerMode::beats), 8.0);
    EXPECT_EQ(length_text(project, 1.0, 0.0, RulerMode::time), "0:01.000");
    EXPECT_EQ(parse_length(project, "0:01", 0.0, RulerMode::time), 1.0);
}

// Drop frame leaves out two numbers a minute, but for each tenth: 17,982 frames are ten minutes.
TEST_F(TimeText, LeavesNumbersOutInDropFrame) {
    struct Case {
        int frame;
        const char* text;
    };
    project.frame_rate = 29.97;
    project.drop_frame = true;
    const double rate = 30000.0 / 1001.0;
    for (const auto& [frame, text] : {Case{0, "00:00:00:00"},
                                      {1799, "00:00:59:29"},
                                      {1800, "00:01:00:02"},
                                      {3597, "00:01:59:29"},
                                      {3598, "00:02:00:02"},
                                      {17981, "00:09:59:29"},
                                      {17982, "00:10:00:00"},
                                      {107892, "01:00:00:00"}}) {
        EXPECT_EQ(position(frame / rate, RulerMode::timecode), text);
        EXPECT_NEAR(parsed(text, RulerMode::timecode) * rate, frame, 1e-6) << text;
        EXPECT_EQ(position(frame / rate, RulerMode::frames), std::to_string(frame));
    }
    project.drop_frame = false; // 29.97 counts every number, and so falls behind the clock
    EXPECT_EQ(position(1800 / rate, RulerMode::timecode), "00:01:00:00");
    project.frame_rate = 23.976;
    EXPECT_EQ(position(86400 * 1.001, RulerMode::timecode), "24:00:00:00");
}

TEST_F(TimeText, ReadsWhatUsersType) {
    project.frame_rate = 25.0;
    EXPECT_EQ(parsed("2.5", RulerMode::time), 2.5);
    EXPECT_EQ(parsed(" -1:00:00", RulerMode::time), -3600.0);
    EXPECT_EQ(parsed("3", RulerMode::beats), 4.0);
    EXPECT_EQ(parsed("3.2", RulerMode::beats), 4.5);
    EXPECT_EQ(parsed("3.2.50 / 0:09", RulerMode::beats_and_time), 4.75);
    EXPECT_EQ(parsed("0:09", RulerMode::beats_and_time), 9.0);
    EXPECT_EQ(parsed("24000", RulerMode::samples), 0.5);
    EXPECT_EQ(parsed("1:05", RulerMode::timecode), 1.2);
    for (const char* text : {"", "x", ":", "..", "1e999", "nan"})
        for (int mode = 0; mode <= 8; ++mode)
            EXPECT_TRUE(std::isfinite(parse_position(project, text, *ruler_of(project, mode)))) << text;
    EXPECT_EQ(ruler_of(project, 9), std::nullopt);
}

TEST_F(TimeText, CountsBeatsOfALengthFromWhereItBegins) {
    project.tempo_map.set_points(
        {{0.0, 60.0, false, true, Meter{4, 4}}, {8.0, 60.0, false, true, Meter{6, 8}}});
    EXPECT_EQ(length_text(project, 5.25, 1.0, RulerMode::beats), "1.1.25");
    EXPECT_EQ(length_text(project, 2.0, 3.0, RulerMode::beats), "0.2.00");
    EXPECT_EQ(length_text(project, 3.5, 8.0, RulerMode::beats), "1.1.00");
    EXPECT_EQ(parse_length(project, "1.1.00", 8.0, RulerMode::beats), 3.5);
    EXPECT_EQ(parse_length(project, "0.2", 3.0, RulerMode::beats), 2.0);
}

TEST_F(TimeText, PositionsComeBackFromEachUnit) {
    project.frame_rate = 30.0;
    project.start_seconds = 12.25;
    project.start_measure = 3;
    project.tempo_map.set_points(
        {{0.0, 90.0, true, true, Meter{3, 4}}, {40.0, 190.0, false, true, Meter{7, 8}}});
    std::mt19937 random(5);
    std::uniform_real_distribution<double> pick(0.0, 90.0);
    for (int round = 0; round < 100; ++round) {
        const double seconds = pick(random);
        for (int number = 0; number <= 8; ++number) {
            const RulerMode mode = *ruler_of(project, number);
            const double resolution = number == 5 || number == 8 ? 1.0 / 30.0 : 0.01;
            EXPECT_NEAR(parse_position(project, position(seconds, mode), mode), seconds, resolution)
                << number << ": " << position(seconds, mode);
        }
    }
}

TEST_F(TimeText, AnyNumberHasAText) {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double seconds : {infinity, -infinity, std::nan(""), 1e300})
        for (int number = 0; number <= 8; ++number) {
            EXPECT_NE(position(seconds, *ruler_of(project, number)), "");
            EXPECT_NE(length_text(project, seconds, -seconds, *ruler_of(project, number)), "");
        }
}

} // namespace
} // namespace headless::project
