// Files inserted at a place, and loudness read and set, on the headless host.

#include "api/media/insertion.hpp"
#include "api/media/loudness.hpp"
#include "tests/headless/support/sound_files.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <cmath>

namespace {

using namespace mk_api::loudness;
using namespace mk_api::mediaItem;
using headless::test::tone;
using mk_test::sample_rate;

class Insertion : public mk_test::BoundPlugin {
protected:
    static double position(MediaItem* item) { return GetMediaItemInfo_Value(item, "D_POSITION"); }

    headless::project::Item& first = add_item(tone(2.0, 0.1, sample_rate), 0.0, "first.wav");
    headless::project::Item& second = add_item(tone(0.3, 0.5, sample_rate), 1.0, "second.wav");
    headless::project::Project& project = workstation.project();
    MediaTrack* track = handle(first.track());
    const std::string file = folder / "first.wav";
};

TEST_F(Insertion, RestoresBothSelectionsAndLeavesTheNewItemSelected) {
    second.set_selected(true);
    second.track().set_selected(true);
    EXPECT_EQ(InsertMediaTrackItemSecond(track, (folder / "none").c_str(), 0, 5.0), nullptr) << "refused";
    EXPECT_TRUE(second.selected() && project.selected_items().size() == 1);
    MediaItem* item = InsertMediaTrackItemSecond(track, file.c_str(), 0, 5.0);
    EXPECT_TRUE(item == handle(*first.track().items().at(1)) && position(item) == 5.0);
    EXPECT_TRUE(second.selected() && GetSelectedMediaItem(nullptr, 0) == item);
    EXPECT_TRUE(second.track().selected() && !first.track().selected() && project.cursor_seconds == 7.0);
    first.track().set_selected(true);
    EXPECT_EQ(position(InsertMediaSelectedTrackIdSecond(nullptr, 0, file.c_str(), 1, 0.5)), 7.5);
    EXPECT_EQ(project.selected_tracks().size(), 2u) << "a selected track stays selected";
}

TEST_F(Insertion, LaysABatchEndToEndInSecondsOrFrames) {
    std::vector<MediaItem*> items;
    EXPECT_EQ(InsertMediaItems(track, {file, folder / "none", file}, 10.0, 1.0, 0, items), 0);
    EXPECT_EQ(InsertMediaItems(track, {file, file}, 12.9, 5.0, 1, items), 0);
    ASSERT_EQ(items.size(), 5u);
    EXPECT_TRUE(position(items[0]) == 10.0 && !items[1] && position(items[2]) == 13.0) << "none left out";
    EXPECT_TRUE(position(items[3]) == 0.5 && position(items[4]) == 65.0 / 24.0);
    EXPECT_EQ(InsertMediaItems(track, {file}, 0.0, 0.0, 2, items), 1);
    EXPECT_EQ(items.size(), 5u);
}

TEST_F(Insertion, BringsTheLoudnessToTheTargetOrLeavesTheVolume) {
    double target_free = 0.0, at_seconds = 9.0, again = 9.0;
    EXPECT_EQ(GetMediaIdLoudnessMaxMomentary(nullptr, 0, &target_free, &at_seconds), 0);
    first.volume = 0.25;
    EXPECT_TRUE(SetMediaItemLoudnessMaxMomentary(handle(first), -31.5, &again) && again == at_seconds);
    EXPECT_NEAR(20.0 * std::log10(first.volume), -31.5 - target_free, 1e-6);
    EXPECT_EQ(GetMediaItemLoudnessMaxMomentary(handle(first), &again, nullptr), 0);
    EXPECT_NEAR(again, -31.5, 0.001);
    EXPECT_FALSE(SetMediaIdLoudnessMaxMomentary(nullptr, 1, -23.0, nullptr) || second.volume != 1.0)
        << "short";
    const double before = first.volume;
    double loudness = 7.0, position_seconds = 8.0;
    EXPECT_FALSE(SetMediaItemLoudnessMaxMomentary(handle(first), HUGE_VAL, &position_seconds));
    overrule(
        "NF_AnalyzeTakeLoudness2", +[](void*, bool, double*, double*, double*, double*, double*,
                                       double* maximum, double*, double* position) {
            *maximum = *position = 1.0;
            return false;
        });
    EXPECT_EQ(GetMediaItemLoudnessMaxMomentary(handle(first), &loudness, &position_seconds), 1);
    EXPECT_FALSE(SetMediaItemLoudnessMaxMomentary(handle(first), -23.0, &position_seconds));
    EXPECT_TRUE(loudness == 7.0 && position_seconds == 8.0 && first.volume == before) << "left alone";
    overrule("NF_AnalyzeTakeLoudness2", static_cast<void*>(nullptr));
    EXPECT_EQ(GetMediaItemLoudnessMaxMomentary(handle(first), &again, nullptr), 1);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_NE(messages[0].find("MK_GetMediaItemLoudnessMaxMomentary"), std::string::npos);
}

} // namespace
