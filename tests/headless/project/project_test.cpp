#include "headless/project/project.hpp"

#include <gtest/gtest.h>

#include <gmock/gmock.h>
#include <random>
#include <vector>

namespace headless {
namespace {

using testing::ElementsAre;

std::vector<int> depths(const Project& project) {
    std::vector<int> depths;
    for (const auto& track : project.tracks()) {
        depths.push_back(track->depth());
    }
    return depths;
}

void add_tracks(Project& project, const std::vector<int>& depth_changes) {
    for (const int change : depth_changes) {
        project.insert_track(project.tracks().size()).set_folder_depth_change(change);
    }
}

TEST(Project, keeps_items_in_track_order_then_by_position) {
    Project project;
    add_tracks(project, {0, 0});
    Item& late = project.track(0)->add_item(4.0, 1.0);
    Item& other = project.track(1)->add_item(0.0, 1.0);
    Item& twin = project.track(0)->add_item(4.0, 2.0);
    Item& early = project.track(0)->add_item(1.0, 1.0);
    EXPECT_EQ(project.item(0), &early);
    EXPECT_EQ(project.item(1), &late);
    EXPECT_EQ(project.item(2), &twin);
    EXPECT_EQ(project.item(3), &other);
    EXPECT_EQ(project.item(4), nullptr);
    early.set_position_seconds(9.0);
    EXPECT_EQ(project.item(2), &early);
    EXPECT_EQ(project.end_seconds(), 10.0);
}

TEST(Project, knows_which_objects_live) {
    Project project;
    Track& track = project.insert_track(0);
    Item& item = track.add_item(0.0, 1.0);
    const Take* first = &item.add_take({}, "first");
    const Envelope* envelope = &item.take(0)->add_envelope("Volume");
    Take& second = item.add_take({}, "second");
    EXPECT_EQ(item.active_take(), first);
    EXPECT_TRUE(project.live_objects().contains(envelope));
    item.set_active_take(second);
    item.crop_to_active_take();
    EXPECT_EQ(item.active_take(), &second);
    EXPECT_FALSE(project.live_objects().contains(first));
    EXPECT_FALSE(project.live_objects().contains(envelope));
    item.set_selected(true);
    track.set_selected(true);
    project.erase_track(track);
    EXPECT_FALSE(project.live_objects().contains(&item));
    EXPECT_FALSE(project.live_objects().contains(&track));
    EXPECT_EQ(project.selected_items().size(), 0U);
    EXPECT_EQ(project.selected_tracks().size(), 0U);
    EXPECT_TRUE(project.live_objects().contains(&project.master()));
}

TEST(Selection, follows_the_items_when_they_and_their_tracks_move) {
    Project project;
    add_tracks(project, {0, 0});
    Item& first = project.track(0)->add_item(0.0, 1.0);
    Item& second = project.track(1)->add_item(0.0, 1.0);
    Item& third = project.track(1)->add_item(5.0, 1.0);
    project.select_all_items(true);
    third.set_position_seconds(-1.0);
    project.insert_track(0).add_item(0.0, 1.0);
    EXPECT_THAT(std::vector<Item*>(project.selected_items().begin(), project.selected_items().end()),
                ElementsAre(&first, &third, &second));
    project.track(1)->erase_item(first);
    EXPECT_EQ(project.selected_items().at(0), &third);
    EXPECT_EQ(project.selected_items().at(2), nullptr);
    project.select_all_items(false);
    EXPECT_EQ(project.selected_items().size(), 0U);
}

TEST(Selection, answers_like_a_plain_scan_under_random_use) {
    Project project;
    Track& track = project.insert_track(0);
    for (int i = 0; i < 50; ++i) {
        track.add_item(i, 1.0);
    }
    std::mt19937 random(7);
    for (int step = 0; step < 5000; ++step) {
        Item& item = *project.item(random() % 50);
        item.set_selected(random() % 2 == 0);
        std::vector<Item*> expected;
        for (const auto& candidate : track.items()) {
            if (candidate->selected()) {
                expected.push_back(candidate.get());
            }
        }
        const auto& selection = project.selected_items();
        ASSERT_EQ(selection.size(), expected.size());
        for (int ask = 0; ask < 3 && !expected.empty(); ++ask) {
            const std::size_t index = random() % expected.size();
            ASSERT_EQ(selection.at(index), expected[index]);
        }
    }
}

TEST(TrackTree, gives_depths_and_parents_from_the_relative_numbers) {
    Project project;
    add_tracks(project, {1, 1, -2, 0, -5, 7, 0});
    EXPECT_THAT(depths(project), ElementsAre(0, 1, 2, 0, 0, 0, 1));
    EXPECT_EQ(project.track(2)->parent(), project.track(1));
    EXPECT_EQ(project.track(3)->parent(), nullptr);
    project.insert_track(2);
    EXPECT_THAT(depths(project), ElementsAre(0, 1, 2, 2, 0, 0, 0, 1));
}

struct EraseCase {
    const char* name;
    std::vector<int> depth_changes;
    std::size_t erased;
    std::vector<int> depths_left;
};

class EraseTrackTest : public testing::TestWithParam<EraseCase> {};

TEST_P(EraseTrackTest, keeps_the_depth_of_the_tracks_around) {
    Project project;
    add_tracks(project, GetParam().depth_changes);
    project.erase_track(*project.track(GetParam().erased));
    EXPECT_EQ(depths(project), GetParam().depths_left);
}

INSTANTIATE_TEST_SUITE_P(Trees, EraseTrackTest,
                         testing::Values(EraseCase{"plain_track", {0, 0, 0}, 1, {0, 0}},
                                         EraseCase{"last_child", {1, 0, -1, 0}, 2, {0, 1, 0}},
                                         EraseCase{"only_child", {1, -1, 0}, 1, {0, 0}},
                                         EraseCase{"folder_with_children", {1, 0, -1, 0}, 0, {0, 0, 0}},
                                         EraseCase{"inner_folder", {1, 1, -2, 0}, 1, {0, 1, 0}},
                                         EraseCase{"folder_that_stays_open", {1, 1, 0}, 1, {0, 1}},
                                         EraseCase{"first_of_many", {0, 1, -1, 0}, 0, {0, 1, 0}}),
                         [](const auto& test) { return test.param.name; });

} // namespace
} // namespace headless
