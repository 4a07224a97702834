#include "headless/project/project.hpp"
#include "headless/project/tempo_edit.hpp"

#include <gtest/gtest.h>

namespace headless::project {
namespace {

struct TempoEdit : testing::Test {
    TempoEdit() { project.tempo_bpm = 60.0; } // a quarter note a second, 4/4

    Item& add_item(double position, double length, Timebase timebase) {
        Item& item = track.add_item(position, length);
        item.timebase = timebase;
        item.add_take({}, "");
        return item;
    }

    static void expect_item(const Item& item, double position, double length, double rate) {
        EXPECT_DOUBLE_EQ(item.position_seconds(), position);
        EXPECT_DOUBLE_EQ(item.length_seconds(), length);
        EXPECT_DOUBLE_EQ(item.active_take()->play_rate, rate);
    }

    Project project;
    Track& track = project.insert_track(0);
};

TEST_F(TempoEdit, ItemsFollowTheBeatsAsTheirTimebaseSays) {
    const Item& with_track = add_item(1.0, 2.0, Timebase::inherited);
    const Item& whole = add_item(4.0, 2.0, Timebase::beats);
    const Item& position = add_item(6.0, 2.0, Timebase::beats_position);
    Item& midi = add_item(8.0, 2.0, Timebase::beats);
    midi.active_take()->source.type = "MIDI";
    track.timebase = Timebase::time;
    set_project_tempo(project, 120.0);
    expect_item(with_track, 1.0, 2.0, 1.0);
    expect_item(whole, 2.0, 1.0, 2.0);
    expect_item(position, 3.0, 2.0, 1.0);
    expect_item(midi, 4.0, 1.0, 1.0);
    set_project_tempo(project, 0.0);
    EXPECT_EQ(project.tempo_bpm, 120.0);
}

TEST_F(TempoEdit, WhatLiesBeforeAChangeStaysExactly) {
    const double odd = 1.0 / 3.0;
    const Item& before = add_item(odd, odd, Timebase::beats);
    const Item& across = add_item(3.0, 2.0, Timebase::beats);
    project.markers.add({false, odd, 0.0, "", 1});
    project.markers.add({true, 2.0, 6.0, "", 1});
    add_tempo_point(project, {4.0, 30.0});
    EXPECT_EQ(before.position_seconds(), odd);
    EXPECT_EQ(before.length_seconds(), odd);
    expect_item(across, 3.0, 3.0, 2.0 / 3.0);
    EXPECT_EQ(project.markers.all()[0].position_seconds, odd);
    EXPECT_EQ(project.markers.all()[1].position_seconds, 2.0);
    EXPECT_DOUBLE_EQ(project.markers.all()[1].end_seconds, 8.0);
    project.timebase = Timebase::time;
    erase_tempo_point(project, 0);
    expect_item(across, 3.0, 2.0, 1.0);
    EXPECT_DOUBLE_EQ(project.markers.all()[1].end_seconds, 8.0);
}

TEST_F(TempoEdit, LaterPointsKeepTheirQuarterNotes) {
    project.tempo_map.set_points({{0.0, 60.0},
                                  {4.0, 60.0, true},
                                  {6.0, 1.0, false, false, Meter{3, 4}},
                                  {8.0, 120.0},
                                  {9.0, 90.0}}); // at the quarter notes 0, 4, 6.5, 10 and 12
    replace_tempo_point(project, 0, {0.0, 120.0});
    const auto points = project.tempo_map.points();
    EXPECT_DOUBLE_EQ(points[1].position_seconds, 2.0);
    EXPECT_DOUBLE_EQ(points[2].position_seconds, 4.0);
    EXPECT_DOUBLE_EQ(points[3].position_seconds, 6.0);
    EXPECT_DOUBLE_EQ(points[4].position_seconds, 7.0);
    project.tempo_timebase = Timebase::time;
    replace_tempo_point(project, 0, {0.0, 60.0});
    EXPECT_DOUBLE_EQ(project.tempo_map.points()[4].position_seconds, 7.0);
    EXPECT_FALSE(erase_tempo_point(project, 5));
    EXPECT_EQ(replace_tempo_point(project, 5, {}), std::nullopt);
}

TEST_F(TempoEdit, AMovedPointLeavesPointsThatItPasses) {
    project.tempo_map.set_points({{2.0, 120.0}, {4.0, 60.0}, {8.0, 30.0}}); // at 2, 6 and 10
    EXPECT_EQ(replace_tempo_point(project, 0, {5.0, 120.0}), 1U);
    const auto points = project.tempo_map.points();
    EXPECT_DOUBLE_EQ(points[0].position_seconds, 4.0);
    EXPECT_DOUBLE_EQ(points[1].position_seconds, 5.0);
    EXPECT_DOUBLE_EQ(points[2].position_seconds, 7.5); // five quarter notes up to the second, then 120 bpm
    EXPECT_DOUBLE_EQ(project.tempo_map.quarters_at(7.5), 10.0);
}

} // namespace
} // namespace headless::project
