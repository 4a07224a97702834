// Files inserted at a place, and loudness read and set, on the headless host.

#include "api/media/insertion.hpp"
#include "api/media/lookup.hpp"
#include "api/media/loudness.hpp"
#include "tests/headless/support/sound_files.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <iterator>
#include <tuple>

namespace {

using namespace mk_api::loudness;
using namespace mk_api::mediaItem;
using headless::test::tone;
using mk_test::sample_rate;
using testing::ElementsAre;
using testing::HasSubstr;

class Insertion : public mk_test::BoundPlugin {
protected:
    static std::vector<MediaItem*> selected_items() {
        std::vector<MediaItem*> items;
        GetSelectedMediaItems(nullptr, items);
        return items;
    }
    static double position(MediaItem* item) { return GetMediaItemInfo_Value(item, "D_POSITION"); }

    headless::project::Item& first = add_item(tone(2.0, 0.1, sample_rate), 0.0, "first.wav");
    headless::project::Item& second = add_item(tone(0.3, 0.5, sample_rate), 1.0, "second.wav");
    headless::project::Project& project = workstation.project();
    MediaTrack* track = handle(first.track());
    const std::string file = folder / "first.wav";
};

TEST_F(Insertion, SelectsTheNewItemAndRestoresTheSelection) {
    second.set_selected(true);
    second.track().set_selected(true);
    MediaItem* item = InsertMediaTrackItemSecond(track, file.c_str(), 0, 5.0);
    EXPECT_EQ(item, handle(*first.track().items().at(1)));
    EXPECT_EQ(position(item), 5.0);
    EXPECT_EQ(project.cursor_seconds, 7.0);
    EXPECT_EQ(selected_items(), std::vector({item, handle(second)}));
    EXPECT_TRUE(second.track().selected());
    EXPECT_FALSE(first.track().selected());
    first.track().set_selected(true);
    EXPECT_EQ(position(InsertMediaSelectedTrackIdSecond(nullptr, 0, file.c_str(), 1, 0.5)), 7.5);
    EXPECT_EQ(project.selected_tracks().size(), 2u) << "a selected track stays selected";
}

TEST_F(Insertion, OfARefusedFileChangesNothing) {
    second.set_selected(true);
    EXPECT_EQ(InsertMediaTrackItemSecond(track, (folder / "none").c_str(), 0, 5.0), nullptr);
    EXPECT_EQ(selected_items(), std::vector({handle(second)}));
}

TEST_F(Insertion, LaysABatchEndToEndInSecondsOrFrames) {
    std::vector<MediaItem*> items;
    EXPECT_EQ(InsertMediaItems(track, {file, folder / "none", file}, 10.0, 1.0, 0, items), 0);
    EXPECT_EQ(InsertMediaItems(track, {file, file}, 12.9, 5.0, 1, items), 0);
    EXPECT_EQ(InsertMediaItems(track, {file}, 0.0, 0.0, 2, items), 1) << "no such unit";
    ASSERT_EQ(items.size(), 5u);
    EXPECT_EQ(items[1], nullptr) << "refused";
    items.erase(items.begin() + 1);
    std::vector<double> positions;
    std::ranges::transform(items, std::back_inserter(positions), position);
    EXPECT_EQ(positions, (std::vector{10.0, 13.0, 0.5, 65.0 / 24.0}));
}

TEST_F(Insertion, BringsTheLoudnessToTheTarget) {
    double before = 0.0, after = 0.0, at_seconds = 9.0, again_at_seconds = 8.0;
    EXPECT_EQ(GetMediaIdLoudnessMaxMomentary(nullptr, 0, &before, &at_seconds), 0);
    first.volume = 0.25;
    EXPECT_TRUE(SetMediaItemLoudnessMaxMomentary(handle(first), -31.5, &again_at_seconds));
    EXPECT_EQ(again_at_seconds, at_seconds);
    EXPECT_NEAR(20.0 * std::log10(first.volume), -31.5 - before, 1e-6);
    EXPECT_EQ(GetMediaItemLoudnessMaxMomentary(handle(first), &after, nullptr), 0);
    EXPECT_NEAR(after, -31.5, 0.001);
}

TEST_F(Insertion, LeavesTheVolumeWithoutATarget) {
    double loudness = 7.0, at_seconds = 8.0;
    EXPECT_FALSE(SetMediaIdLoudnessMaxMomentary(nullptr, 1, -23.0, nullptr)) << "too short";
    EXPECT_FALSE(SetMediaItemLoudnessMaxMomentary(handle(first), HUGE_VAL, &at_seconds));
    overrule(
        "NF_AnalyzeTakeLoudness2", +[](void*, bool, double*, double*, double*, double*, double*,
                                       double* maximum, double*, double* position) {
            *maximum = *position = 1.0;
            return false;
        });
    EXPECT_EQ(GetMediaItemLoudnessMaxMomentary(handle(first), &loudness, &at_seconds), 1);
    EXPECT_FALSE(SetMediaItemLoudnessMaxMomentary(handle(first), -23.0, &at_seconds));
    EXPECT_TRUE(messages.empty());
    overrule("NF_AnalyzeTakeLoudness2", static_cast<void*>(nullptr));
    EXPECT_EQ(GetMediaItemLoudnessMaxMomentary(handle(first), &loudness, nullptr), 1);
    EXPECT_THAT(messages, ElementsAre(HasSubstr("MK_GetMediaItemLoudnessMaxMomentary")));
    EXPECT_EQ(std::tuple(loudness, at_seconds), std::tuple(7.0, 8.0)) << "left alone";
    EXPECT_EQ(std::tuple(first.volume, second.volume), std::tuple(1.0, 1.0));
}

} // namespace
