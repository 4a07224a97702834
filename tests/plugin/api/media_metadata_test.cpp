// Items found, counted by type, measured and named, on a living project.

#include "api/media/lookup.hpp"
#include "api/media/metadata.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

namespace {

using namespace mk_api::mediaItem;

class Media : public mk_test::BoundPlugin {
protected:
    Media() {
        second.set_position_seconds(1.5);
        second.set_length_seconds(2.25);
        SetMediaItemSelected(handle(second), true);
        SetTrackSelected(handle(second.track()), true);
    }
    headless::Item& first = add_item(mk_test::babble(0.5, 8000, 1), 0.0, "first.take.wav");
    headless::Item& second = add_item(mk_test::babble(0.5, 8000, 2), 1.5, "second.wav");
};

TEST_F(Media, finds_an_item_in_each_of_the_ways) {
    EXPECT_EQ(GetMediaItemSelect(nullptr, 1, 0), handle(second));
    EXPECT_EQ(GetMediaItemSelect(nullptr, 0, 1), handle(second));
    EXPECT_EQ(GetMediaItemSelect(nullptr, 0, 2), nullptr);
    EXPECT_EQ(GetMediaTrackItemSelect(nullptr, 1, 0, 0), handle(second));
    EXPECT_EQ(GetMediaTrackItemSelect(nullptr, 0, 0, 1), handle(second));
    EXPECT_EQ(GetMediaTrackItemSelect(nullptr, 9, 0, 0), nullptr);
    EXPECT_EQ(GetMediaTrackItemSelect(nullptr, 0, 0, 2), nullptr);
}

TEST_F(Media, appends_the_selection_and_selects_a_list) {
    std::vector<MediaItem*> items{handle(first)};
    EXPECT_EQ(GetSelectedMediaItems(nullptr, items), 0);
    EXPECT_EQ(items, std::vector({handle(first), handle(second)}));
    EXPECT_EQ(SelectMediaItems({handle(first)}, true), 0);
    EXPECT_EQ(CountSelectedMediaItems(nullptr), 2);
}

/// What a property's five forms read of the second item, which is the only selected one on the only selected
/// track.
template <class T>
void expect_in_each_form(T expected, bool (*item)(MediaItem*, T*), bool (*project)(ReaProject*, int, T*),
                         bool (*selected)(ReaProject*, int, T*), bool (*track)(ReaProject*, int, int, T*),
                         bool (*selected_track)(ReaProject*, int, int, T*), MediaItem* second) {
    T values[5] = {};
    EXPECT_TRUE(item(second, &values[0]) && project(nullptr, 1, &values[1]) &&
                selected(nullptr, 0, &values[2]) && track(nullptr, 1, 0, &values[3]) &&
                selected_track(nullptr, 0, 0, &values[4]));
    for (const T value : values)
        EXPECT_EQ(value, expected);
}

TEST_F(Media, measures_the_same_item_in_each_form) {
    workstation.project().frame_rate = 24.0;
    expect_in_each_form(3.75, GetMediaItemEndTime, GetMediaEndTime, GetSelectedMediaEndTime,
                        GetTrackMediaEndTime, GetSelectedTrackMediaEndTime, handle(second));
    expect_in_each_form(90, GetMediaItemEndTimeFrame, GetMediaEndTimeFrame, GetSelectedMediaEndTimeFrame,
                        GetTrackMediaEndFrame, GetSelectedTrackMediaEndTimeFrame, handle(second));
    expect_in_each_form(2.25, GetMediaItemLength, GetMediaLength, GetSelectedMediaLength, GetTrackMediaLength,
                        GetSelectedTrackMediaLength, handle(second));
}

TEST_F(Media, fails_with_outputs_unwritten_for_a_missing_item) {
    double seconds = -1.0;
    int frames = -1;
    char name[8] = "before";
    EXPECT_FALSE(GetMediaEndTime(nullptr, 2, &seconds));
    EXPECT_FALSE(GetSelectedMediaLength(nullptr, 1, &seconds));
    EXPECT_FALSE(GetTrackMediaEndFrame(nullptr, 0, 5, &frames));
    EXPECT_FALSE(GetMediaItemName(nullptr, name, sizeof name));
    EXPECT_FALSE(SetMediaName(nullptr, 2, "x"));
    EXPECT_EQ(seconds, -1.0);
    EXPECT_EQ(frames, -1);
    EXPECT_STREQ(name, "before");
}

// The factors 10000 and 0.0001 do not cancel out: at such lengths the plain product would give another frame.
TEST_F(Media, reckons_frames_in_the_given_order_of_operations) {
    workstation.project().frame_rate = 30.0;
    second.set_position_seconds(0.0);
    for (const double length : {0.1, 0.7, 1.1, 2.3, 4.7}) {
        second.set_length_seconds(length);
        int frame = -1;
        EXPECT_TRUE(GetMediaItemEndTimeFrame(handle(second), &frame));
        EXPECT_EQ(frame, static_cast<int>(30.0 * (length * 10000.0) * 0.0001)) << length;
    }
}

struct NameCase {
    const char* set;
    const char* read;
};

class MediaName : public Media, public ::testing::WithParamInterface<NameCase> {};

TEST_P(MediaName, is_read_without_anything_from_a_dot_that_something_follows) {
    EXPECT_TRUE(SetSelectedTrackMediaName(nullptr, 0, 0, GetParam().set));
    char name[64] = "";
    EXPECT_TRUE(GetTrackMediaName(nullptr, 1, 0, name, sizeof name));
    EXPECT_STREQ(name, GetParam().read);
}

INSTANTIATE_TEST_SUITE_P(Names, MediaName,
                         ::testing::Values(NameCase{"take.final.wav", "take"}, NameCase{"ends.", "ends."},
                                           NameCase{".hidden", ""}, NameCase{"two..", "two"},
                                           NameCase{"a.b\nc.d.e\n.", "a\nc\n."},
                                           NameCase{"日本.wav", "日本"}));

TEST_F(Media, cuts_names_to_the_buffers) {
    SetMediaItemName(handle(first), "abcdef.wav");
    char name[8] = "";
    EXPECT_TRUE(GetMediaName(nullptr, 0, name, 4));
    EXPECT_STREQ(name, "abc");
    EXPECT_TRUE(SetMediaItemName(handle(first), std::string(1500, 'n').c_str()));
    EXPECT_EQ(first.active_take()->name, std::string(1023, 'n'));
}

TEST_F(Media, counts_sources_by_type_whatever_the_case) {
    const auto count = [](const char* type) {
        int all = -1;
        int of_type = -1;
        EXPECT_TRUE(GetMediaTypeCount(nullptr, type, &all, &of_type));
        return std::pair(all, of_type);
    };
    EXPECT_EQ(count(""), std::pair(2, 2));
    EXPECT_EQ(count("wav"), std::pair(2, 2));
    EXPECT_EQ(count("Wave"), std::pair(2, 2));
    EXPECT_EQ(count("MP3"), std::pair(2, 0));
    int all = 0;
    int of_type = 0;
    EXPECT_TRUE(GetSelectedTrackMediaTypeCount(nullptr, 0, "WAV", &all, &of_type));
    EXPECT_EQ(std::pair(all, of_type), std::pair(1, 1));
    workstation.project().tracks()[0]->add_item(5.0, 1.0); // without a take
    EXPECT_EQ(count("wav"), std::pair(3, 2));
    EXPECT_EQ(count(""), std::pair(3, 3));
}

TEST_F(Media, names_the_file_behind_a_take) {
    EXPECT_EQ(GetSourceName(handle(first), 0, false), "first.take.wav");
    EXPECT_EQ(GetSourceName(handle(first), 0, true), "first.take");
    EXPECT_EQ(GetSourceName(handle(first), 1, false), "");
    EXPECT_EQ(GetSourceName(nullptr, 0, false), "");
    char name[16] = "";
    EXPECT_EQ(GetSourceName(handle(second), 0, true, name, sizeof name), 0);
    EXPECT_STREQ(name, "second");
    std::filesystem::remove(folder.path / "second.wav");
    EXPECT_EQ(GetSourceName(handle(second), 0, true), "") << "a path that is gone has no parts";
}

} // namespace
