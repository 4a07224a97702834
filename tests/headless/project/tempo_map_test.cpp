#include "headless/project/project.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace headless::project {
namespace {

struct TempoMapTest : testing::Test {
    Project project;
    TempoMap& map = project.tempo_map;

    // The quarter notes from 0 on, added up in small steps from the tempos alone.
    double quarters_by_steps(double seconds) const {
        constexpr double step = 1e-5;
        double quarters = 0.0;
        for (double t = step / 2; t < seconds; t += step)
            quarters += map.tempo_at(t) / 60.0 * step;
        return quarters;
    }
};

TEST_F(TempoMapTest, WithoutPointsFollowsTheProject) {
    project.tempo_bpm = 90.0;
    project.meter_numerator = 6;
    project.meter_denominator = 8;
    EXPECT_DOUBLE_EQ(map.quarters_at(2.0), 3.0);
    EXPECT_DOUBLE_EQ(map.seconds_at(-3.0), -2.0);
    const MusicalPosition position = map.position_at(4.0); // 12 eighths: two measures
    EXPECT_EQ(position.measure, 2);
    EXPECT_DOUBLE_EQ(position.beat, 0.0);
    EXPECT_DOUBLE_EQ(position.full_beats, 12.0);
    EXPECT_EQ(position.meter, (Meter{6, 8}));
    EXPECT_EQ(map.position_at(-0.5).measure, -1);
    EXPECT_DOUBLE_EQ(map.position_at(-1.0).beat, 3.0);
    project.tempo_bpm = 180.0;
    EXPECT_DOUBLE_EQ(map.quarters_at(2.0), 6.0);
}

TEST_F(TempoMapTest, StepsAndRampsFollowHandReckonedFigures) {
    // 60 to 120 bpm in 4 s: 4 s at 90 bpm on average, 6 quarter notes; then 120 bpm, from 6 s on 30 bpm.
    map.set_points({{0.0, 60.0, true}, {4.0, 120.0}, {6.0, 30.0}});
    EXPECT_DOUBLE_EQ(map.quarters_at(4.0), 6.0);
    EXPECT_DOUBLE_EQ(map.quarters_at(2.0), 2.5); // 2 s at 75 bpm on average
    EXPECT_DOUBLE_EQ(map.tempo_at(1.0), 75.0);
    EXPECT_DOUBLE_EQ(map.quarters_at(6.0), 10.0);
    EXPECT_DOUBLE_EQ(map.quarters_at(10.0), 12.0);
    EXPECT_DOUBLE_EQ(map.seconds_at(2.5), 2.0);
    EXPECT_DOUBLE_EQ(map.seconds_at(8.0), 5.0);
    EXPECT_DOUBLE_EQ(map.seconds_at(13.0), 12.0);
    EXPECT_DOUBLE_EQ(map.quarters_at(-1.0), -1.0); // the first tempo, before it begins to change
    EXPECT_DOUBLE_EQ(map.seconds_at(-1.0), -1.0);
}

TEST_F(TempoMapTest, AFirstPointAfterTheStartLeavesTheProjectsTempoBeforeIt) {
    map.set_points({{2.0, 60.0, false, true, Meter{3, 4}}});
    EXPECT_DOUBLE_EQ(map.quarters_at(2.0), 4.0);
    EXPECT_DOUBLE_EQ(map.quarters_at(4.0), 6.0);
    EXPECT_EQ(map.meter_at(1.9), (Meter{4, 4}));
    EXPECT_EQ(map.meter_at(2.0), (Meter{3, 4}));
    EXPECT_EQ(map.position_at(5.0).measure, 2);
}

TEST_F(TempoMapTest, ASignatureAloneDoesNotInterruptARamp) {
    map.set_points(
        {{0.0, 60.0, true}, {2.0, 1.0, false, false, Meter{5, 8}}, {4.0, 120.0}, {4.0, 90.0}, {5.0, -1.0}});
    EXPECT_DOUBLE_EQ(map.quarters_at(4.0), 6.0);
    EXPECT_DOUBLE_EQ(map.tempo_at(4.0), 90.0); // of two points at one time, the last counts
    EXPECT_DOUBLE_EQ(map.tempo_at(9.0), 90.0);
    EXPECT_EQ(map.meter_at(3.0), (Meter{5, 8}));
}

TEST_F(TempoMapTest, ASignatureBeginsAMeasureAndCutsTheOneBefore) {
    // At 60 bpm a second is a quarter note. Six quarter notes of 4/4, then 6/8 to 12, then 4/4.
    map.set_points({{0.0, 60.0, false, true, Meter{4, 4}},
                    {6.0, 60.0, false, true, Meter{6, 8}},
                    {12.0 + 1e-7, 60.0, false, true, Meter{4, 4}}});
    struct Place {
        double seconds;
        int measure;
        double beat, full_beats;
    };
    for (const Place& place : {Place{5.5, 1, 1.5, 5.5},
                               {6.0, 2, 0.0, 6.0},
                               {8.5, 2, 5.0, 11.0},
                               {9.0, 3, 0.0, 12.0},
                               {12.0, 4, 0.0, 18.0},
                               {13.0, 4, 1.0, 19.0}}) {
        SCOPED_TRACE(place.seconds);
        const MusicalPosition position = map.position_at(place.seconds);
        EXPECT_EQ(position.measure, place.measure);
        EXPECT_NEAR(position.beat, place.beat, 1e-6);
        EXPECT_NEAR(position.full_beats, place.full_beats, 1e-6);
        EXPECT_NEAR(map.seconds_at_beats(place.measure, place.beat), place.seconds, 1e-6);
        EXPECT_NEAR(map.seconds_at_beats(place.full_beats), place.seconds, 1e-6);
    }
    const MeasureSpan cut = map.measure_at(5.0);
    EXPECT_EQ(cut.measure, 1);
    EXPECT_DOUBLE_EQ(cut.start_quarters, 4.0);
    EXPECT_DOUBLE_EQ(cut.end_quarters, 6.0);
    EXPECT_NEAR(map.measure(3).end_quarters, 12.0, 1e-6);
    EXPECT_EQ(map.measure(-2).start_quarters, -8.0);
}

TEST_F(TempoMapTest, PlacesOfRandomMapsComeBack) {
    std::mt19937 random(11);
    const auto pick = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (int round = 0; round < 20; ++round) {
        std::vector<TempoPoint> points;
        for (int i = 0; i < 8; ++i) {
            TempoPoint point{pick(0.0, 20.0), pick(20.0, 300.0), pick(0.0, 1.0) < 0.5};
            if (i % 2 == 0)
                point.meter = Meter{static_cast<int>(pick(1.0, 9.0)), 1 << static_cast<int>(pick(0.0, 5.0))};
            points.push_back(point);
        }
        map.set_points(points);
        const double end = pick(1.0, 20.0);
        EXPECT_NEAR(map.quarters_at(end), quarters_by_steps(end), 1e-3);
        for (int i = 0; i < 50; ++i) {
            const double seconds = pick(-2.0, 25.0);
            EXPECT_NEAR(map.seconds_at(map.quarters_at(seconds)), seconds, 1e-9);
            const MusicalPosition position = map.position_at(seconds);
            EXPECT_NEAR(map.seconds_at_beats(position.measure, position.beat), seconds, 1e-3);
            EXPECT_NEAR(map.seconds_at_beats(position.full_beats), seconds, 1e-9);
        }
    }
}

TEST_F(TempoMapTest, KeepsPointsInOrderThroughEdits) {
    map.read_points({{2.0, 100.0}, {0.0, 90.0}, {std::nan(""), 80.0}});
    EXPECT_FALSE(map.has_new_points());
    EXPECT_EQ(map.points().size(), 2U);
    EXPECT_EQ(map.add({2.0, 110.0}), 2U);
    EXPECT_TRUE(map.has_new_points());
    EXPECT_EQ(map.replace(2, {1.0, 110.0}), 1U);
    EXPECT_EQ(map.replace(1, {std::nan(""), 110.0}), std::nullopt);
    EXPECT_EQ(map.replace(3, {1.0, 110.0}), std::nullopt);
    EXPECT_EQ(map.add({std::nan(""), 110.0}), std::nullopt);
    EXPECT_EQ(map.points()[1].tempo_bpm, 110.0);
    EXPECT_EQ(map.tempo_at(1.0), 110.0);
    EXPECT_TRUE(map.erase(1));
    EXPECT_FALSE(map.erase(2));
    EXPECT_EQ(map.tempo_at(1.0), 90.0);
}

} // namespace
} // namespace headless::project
