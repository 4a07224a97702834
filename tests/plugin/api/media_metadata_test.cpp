// Items found, counted by type, measured and named, on a living project.

#include "api/media/lookup.hpp"
#include "api/media/metadata.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <vector>

namespace {

using namespace mk_api::mediaItem;

class Media : public mk_test::BoundPlugin {
protected:
    Media() {
        workstation.project().frame_rate = 25.0;
        second.set_length_seconds(3.1);
        SetMediaItemSelected(handle(second), true);
        SetTrackSelected(handle(second.track()), true);
    }
    headless::project::Item& first = add_item(mk_test::babble(0.5, 1), 0.0, "first.take.wav");
    headless::project::Item& second = add_item(mk_test::babble(0.5, 2), 1.5, "second.wav");
};

/// What a property's five forms read of the second item, which is the only selected one on the only selected
/// track, and that they write nothing for an item that is not there.
template <class T>
void expect_in_each_form(T expected, MediaItem* second, auto item, auto project, auto selected, auto track,
                         auto selected_track) {
    std::vector<T> values(5);
    EXPECT_TRUE(item(second, &values[0]));
    EXPECT_TRUE(project(nullptr, 1, &values[1]));
    EXPECT_TRUE(selected(nullptr, 0, &values[2]));
    EXPECT_TRUE(track(nullptr, 1, 0, &values[3]));
    EXPECT_TRUE(selected_track(nullptr, 0, 0, &values[4]));
    EXPECT_FALSE(item(nullptr, &values[0]));
    EXPECT_FALSE(project(nullptr, 2, &values[1]));
    EXPECT_FALSE(selected(nullptr, 1, &values[2]));
    EXPECT_FALSE(track(nullptr, 0, 5, &values[3]));
    EXPECT_FALSE(selected_track(nullptr, 1, 0, &values[4]));
    EXPECT_EQ(values, std::vector<T>(5, expected));
}

TEST_F(Media, MeasuresTheSameItemInEachForm) {
    expect_in_each_form(1.5 + 3.1, handle(second), GetMediaItemEndTime, GetMediaEndTime,
                        GetSelectedMediaEndTime, GetTrackMediaEndTime, GetSelectedTrackMediaEndTime);
    // The factors 10000 and 0.0001 do not cancel out: the plain product would give 114.
    expect_in_each_form(115, handle(second), GetMediaItemEndTimeFrame, GetMediaEndTimeFrame,
                        GetSelectedMediaEndTimeFrame, GetTrackMediaEndFrame,
                        GetSelectedTrackMediaEndTimeFrame);
    expect_in_each_form(3.1, handle(second), GetMediaItemLength, GetMediaLength, GetSelectedMediaLength,
                        GetTrackMediaLength, GetSelectedTrackMediaLength);
}

TEST_F(Media, AsksTheHostForItemsOfNoTrack) {
    GetTrackMediaItem = [](MediaTrack* track, int number) {
        return track || number != 7 ? nullptr : GetMediaItem(nullptr, 1);
    };
    EXPECT_EQ(GetMediaItemSelect(nullptr, 0, 2), nullptr) << "neither all items nor the selected ones";
    EXPECT_EQ(GetMediaTrackItemSelect(nullptr, 99, 7, 0), handle(second));
    EXPECT_EQ(GetMediaTrackItemSelect(nullptr, 99, 7, 1), handle(second));
}

TEST_F(Media, ReadsNamesUpToTheirFirstDot) {
    const std::string long_name(1500, 'n');
    char name[1100] = "";
    const std::pair<std::string, std::string> cases[] = {{"take.final.wav", "take"},
                                                         {"ends.", "ends."},
                                                         {".hidden", ""},
                                                         {"a.b\nc.d.e\n.", "a\nc\n."},
                                                         {"two..", "two"},
                                                         {"日本.wav", "日本"},
                                                         {long_name, long_name.substr(0, 1023)}};
    for (const auto& [given, expected] : cases) {
        EXPECT_TRUE(SetSelectedTrackMediaName(nullptr, 0, 0, given.c_str()));
        EXPECT_TRUE(GetTrackMediaName(nullptr, 1, 0, name, sizeof name));
        EXPECT_EQ(name, expected);
    }
    EXPECT_TRUE(GetMediaName(nullptr, 1, name, 4));
    EXPECT_STREQ(name, "nnn") << "cut to the buffer";
    EXPECT_FALSE(GetMediaItemName(nullptr, name, sizeof name));
    EXPECT_FALSE(SetMediaName(nullptr, 2, "x"));
    EXPECT_STREQ(name, "nnn");
}

TEST_F(Media, CountsSourcesByType) {
    const std::pair<const char*, int> types[] = {{"", 3}, {"wav", 2}, {"Wave", 2}, {"MP3", 0}};
    workstation.project().tracks()[0]->add_item(5.0, 1.0); // without a take
    int all = -1, of_type = -1;
    for (const auto& [type, expected] : types) {
        EXPECT_TRUE(GetMediaTypeCount(nullptr, type, &all, &of_type));
        EXPECT_EQ(std::pair(all, of_type), std::pair(3, expected)) << type;
    }
    EXPECT_TRUE(GetSelectedTrackMediaTypeCount(nullptr, 0, "WAV", &all, &of_type));
    EXPECT_EQ(std::pair(all, of_type), std::pair(1, 1));
}

TEST_F(Media, NamesTheFileBehindATake) {
    EXPECT_EQ(GetSourceName(handle(first), 0, false), "first.take.wav");
    EXPECT_EQ(GetSourceName(handle(first), 1, false), "");
    char name[16] = "";
    EXPECT_EQ(GetSourceName(handle(second), 0, true, name, sizeof name), 0);
    EXPECT_STREQ(name, "second");
    std::filesystem::remove(folder.path / "second.wav");
    EXPECT_EQ(GetSourceName(handle(second), 0, true), "") << "a path that is gone has no parts";
}

} // namespace
