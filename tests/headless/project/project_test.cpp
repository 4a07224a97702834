#include "headless/project/project.hpp"

#include <gmock/gmock.h>
#include <random>
#include <set>
#include <vector>

namespace headless {
namespace {

using testing::ElementsAre;

void add_tracks(project::Project& project, const std::vector<int>& depth_changes) {
    for (const int change : depth_changes)
        project.insert_track(project.tracks().size()).set_folder_depth_change(change);
}

std::vector<int> depths(const project::Project& project) {
    std::vector<int> depths;
    for (const auto& track : project.tracks())
        depths.push_back(track->depth());
    return depths;
}

std::vector<project::Item*> selected(const project::Project& project) {
    return project.selected_items().all();
}

TEST(Project, KeepsItemsInOrder) {
    project::Project project;
    add_tracks(project, {0, 0});
    project::Item& late = project.track(0)->add_item(4.0, 1.0);
    project::Item& other = project.track(1)->add_item(0.0, 1.0);
    project::Item& twin = project.track(0)->add_item(4.0, 2.0);
    project::Item& early = project.track(0)->add_item(1.0, 1.0);
    project.select_all_items(true);
    EXPECT_THAT(selected(project), ElementsAre(&early, &late, &twin, &other));
    EXPECT_EQ(project.item(4), nullptr);
    early.set_position_seconds(9.0);
    project.insert_track(0).add_item(0.0, 1.0);
    EXPECT_THAT(selected(project), ElementsAre(&late, &twin, &early, &other));
    EXPECT_EQ(project.item(3), &early);
    EXPECT_EQ(project.end_seconds(), 10.0);
    project.track(1)->erase_item(late);
    EXPECT_THAT(selected(project), ElementsAre(&twin, &early, &other));
}

TEST(Project, KnowsItsLiveObjects) {
    project::Project project;
    const project::LiveObjects& live = project.live_objects();
    project::Track& track = project.insert_track(0);
    project::Item& item = track.add_item(0.0, 1.0);
    const project::Take* first = &item.add_take({}, "first");
    const project::Envelope* envelope = &item.take(0)->add_envelope("Volume");
    EXPECT_TRUE(live.contains(first));
    EXPECT_TRUE(live.contains(envelope));
    item.set_active_take(item.add_take({}, "second"));
    item.crop_to_active_take();
    EXPECT_EQ(item.active_take()->name, "second");
    EXPECT_FALSE(live.contains(first));
    EXPECT_FALSE(live.contains(envelope));
    item.set_selected(true);
    track.set_selected(true);
    project.erase_track(track);
    EXPECT_FALSE(live.contains(&item));
    EXPECT_FALSE(live.contains(&track));
    EXPECT_EQ(project.selected_items().size(), 0U);
    EXPECT_EQ(project.selected_tracks().size(), 0U);
}

TEST(Selection, EqualsAScanOfAllItems) {
    project::Project project;
    project::Track& track = project.insert_track(0);
    for (int i = 0; i < 50; ++i)
        track.add_item(i, 1.0);
    const auto expect_a_plain_scan = [&] {
        std::vector<project::Item*> scanned;
        for (const auto& item : track.items())
            if (item->selected())
                scanned.push_back(item.get());
        ASSERT_EQ(selected(project), scanned);
        for (std::size_t i = 0; i <= scanned.size(); ++i)
            ASSERT_EQ(project.selected_items().at(i), i < scanned.size() ? scanned[i] : nullptr);
    };
    std::mt19937 random(7);
    for (int step = 0; step < 5000; ++step) {
        project.item(random() % 50)->set_selected(random() % 2 == 0);
        expect_a_plain_scan();
    }
    for (std::size_t i = 50; i-- > 0; expect_a_plain_scan())
        project.item(i)->set_selected(false);
}

TEST(PointerSet, EqualsAStandardSet) {
    PointerSet addresses;
    std::set<const void*> expected;
    std::vector<int> objects(300);
    std::mt19937 random(7);
    for (int step = 0; step < 20000; ++step) {
        const void* object = &objects[random() % objects.size()];
        if (random() % 2 == 0) {
            addresses.insert(object);
            expected.insert(object);
        } else {
            addresses.erase(object);
            expected.erase(object);
        }
        const void* other = &objects[random() % objects.size()];
        ASSERT_EQ(addresses.contains(other), expected.contains(other));
    }
}

TEST(Project, EndsAtItsLastItemOrRegion) {
    project::Project project;
    project::Item& last = project.insert_track(0).add_item(4.0, 2.0);
    project::Item& first = project.insert_track(0).add_item(0.0, 1.0);
    EXPECT_EQ(project.end_seconds(), 6.0);
    last.set_length_seconds(1.0);
    EXPECT_EQ(project.end_seconds(), 5.0);
    first.set_position_seconds(7.0);
    EXPECT_EQ(project.end_seconds(), 8.0);
    first.track().erase_item(first);
    EXPECT_EQ(project.end_seconds(), 5.0);
    project.erase_track(last.track());
    EXPECT_EQ(project.end_seconds(), 0.0);
    project.markers.add({.is_region = true, .position_seconds = 1.0, .end_seconds = 3.0});
    EXPECT_EQ(project.end_seconds(), 3.0);
}

TEST(TrackTree, FollowsFromTheDepthChanges) {
    project::Project project;
    add_tracks(project, {1, 1, -2, 0, -5, 7, 0});
    EXPECT_THAT(depths(project), ElementsAre(0, 1, 2, 0, 0, 0, 1));
    EXPECT_EQ(project.track(2)->parent(), project.track(1));
    EXPECT_EQ(project.track(3)->parent(), nullptr);
    project.insert_track(2);
    EXPECT_THAT(depths(project), ElementsAre(0, 1, 2, 2, 0, 0, 0, 1));
}

TEST(TrackTree, KeepsDepthsWhenATrackIsErased) {
    struct Tree {
        const char* name;
        std::vector<int> depth_changes;
        std::size_t erased;
        std::vector<int> depths_left;
    };
    for (const auto& [name, depth_changes, erased, depths_left] :
         {Tree{"plain track", {0, 0, 0}, 1, {0, 0}},
          {"last child", {1, 0, -1, 0}, 2, {0, 1, 0}},
          {"folder with children", {1, 0, -1, 0}, 0, {0, 0, 0}},
          {"inner folder", {1, 1, -2, 0}, 1, {0, 1, 0}},
          {"folder that stays open", {1, 1, 0}, 1, {0, 1}}}) {
        project::Project project;
        add_tracks(project, depth_changes);
        project.erase_track(*project.track(erased));
        EXPECT_EQ(depths(project), depths_left) << name;
    }
}

TEST(MarkerList, NumbersMarkersAndRegionsSeparately) {
    project::MarkerList markers;
    EXPECT_EQ(markers.add({.position_seconds = 5.0, .number = 1}), 1);
    EXPECT_EQ(markers.add({.is_region = true, .position_seconds = 1.0, .number = -1}), 1);
    EXPECT_EQ(markers.add({.is_region = true, .position_seconds = 3.0, .number = 3}), 3);
    EXPECT_EQ(markers.add({.is_region = true, .position_seconds = 4.0, .number = 3}), 2);
    EXPECT_EQ(markers.add({.position_seconds = 0.0, .number = 1}), 1) << "markers may share a number";
    EXPECT_EQ(markers.all().front().position_seconds, 0.0);
}

} // namespace
} // namespace headless
