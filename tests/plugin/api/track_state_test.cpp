// Track lookup and the state properties, through the functions that scripts call, on a living project.

#include "api/track/lookup.hpp"
#include "api/track/state.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

namespace {

using namespace MK_FELSPAR;
using mk_api::track::GetTrackCountSelect;
using mk_api::track::GetTrackItemSelect;

class TrackState : public mk_test::BoundPlugin {
protected:
    TrackState() {
        for (std::size_t i = 0; i < 3; ++i)
            workstation.project().insert_track(i);
        SetTrackIdSelected(nullptr, 2, true);
    }
    MediaTrack* track(std::size_t i) { return handle(*workstation.project().track(i)); }
    static double value(MediaTrack* track, const char* key) { return GetMediaTrackInfo_Value(track, key); }
};

TEST_F(TrackState, finds_and_counts_tracks_among_all_or_the_selected) {
    EXPECT_EQ(GetTrackItemSelect(nullptr, 1, 0), track(1));
    EXPECT_EQ(GetTrackItemSelect(nullptr, 0, 1), track(2));
    EXPECT_EQ(GetTrackItemSelect(nullptr, 3, 0), nullptr);
    EXPECT_EQ(GetTrackItemSelect(nullptr, 0, 2), nullptr);
    const int counts[] = {3, 1, 0};
    for (int type = 0; type < 3; ++type) {
        int count = -1;
        EXPECT_TRUE(GetTrackCountSelect(nullptr, type, &count));
        EXPECT_EQ(count, counts[type]);
    }
}

struct SwitchFamily {
    const char* name;
    const char* key;
    bool (*get_item)(MediaTrack*, bool*);
    bool (*get_id)(ReaProject*, int, bool*);
    bool (*get_selected)(ReaProject*, int, bool*);
    bool (*set_item)(MediaTrack*, bool);
    bool (*set_id)(ReaProject*, int, bool);
    bool (*set_selected)(ReaProject*, int, bool);
    bool (*all_off)(ReaProject*);
};

class TrackSwitch : public TrackState, public ::testing::WithParamInterface<SwitchFamily> {};

TEST_P(TrackSwitch, is_written_and_read_by_each_member) {
    const SwitchFamily& family = GetParam();
    bool on = true;
    EXPECT_FALSE(family.get_item(track(0), &on)) << "the result is the state";
    EXPECT_FALSE(on);
    EXPECT_TRUE(family.set_item(track(0), true));
    EXPECT_TRUE(family.set_id(nullptr, 1, true));
    EXPECT_TRUE(family.set_selected(nullptr, 0, true));
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(value(track(i), family.key), 1.0) << i;
    EXPECT_TRUE(family.get_id(nullptr, 1, &on) && on);
    on = false;
    EXPECT_TRUE(family.get_selected(nullptr, 0, &on) && on);
    EXPECT_TRUE(family.all_off(nullptr));
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(value(track(i), family.key), 0.0) << i;
    EXPECT_FALSE(family.set_id(nullptr, 9, true)) << "the host's answer for no track";
}

INSTANTIATE_TEST_SUITE_P(
    Families, TrackSwitch,
    ::testing::Values(SwitchFamily{"mute", "B_MUTE", GetTrackItemMute, GetTrackIdMute, GetSelectedTrackIdMute,
                                   SetTrackItemMute, SetTrackIdMute, SetSelectedTrackIdMute,
                                   SetTrackAllMuteOFF},
                      SwitchFamily{"solo", "I_SOLO", GetTrackItemSolo, GetTrackIdSolo, GetSelectedTrackIdSolo,
                                   SetTrackItemSolo, SetTrackIdSolo, SetSelectedTrackIdSolo,
                                   SetTrackAllSoloOFF}),
    [](const auto& test) { return test.param.name; });

double delivered = 0.0;

TEST_F(TrackState, reads_values_between_off_and_on_as_no_state) {
    GetMediaTrackInfo_Value = [](MediaTrack*, const char*) { return delivered; };
    const auto reads = [&](bool (*get)(MediaTrack*, bool*), double value) {
        bool out = true;
        delivered = value;
        const bool result = get(track(0), &out);
        return std::pair(result, out);
    };
    EXPECT_EQ(reads(GetTrackItemSolo, 2.0), std::pair(true, true)) << "soloed in place";
    EXPECT_EQ(reads(GetTrackItemSolo, 0.5), std::pair(false, true)) << "the output stays unwritten";
    EXPECT_EQ(reads(GetTrackItemMute, 2.0), std::pair(false, true));
    EXPECT_EQ(reads(GetTrackItemMute, 0.0), std::pair(false, false));
}

TEST_F(TrackState, guards_mute_but_asks_the_host_about_the_solo_of_a_missing_track) {
    bool out = true;
    EXPECT_FALSE(GetTrackIdMute(nullptr, 9, &out));
    EXPECT_TRUE(out) << "unwritten";
    EXPECT_FALSE(GetTrackIdSolo(nullptr, 9, &out));
    EXPECT_FALSE(out) << "the host reads 0 from the null track";
}

TEST_F(TrackState, marks_a_colour_as_in_use_but_not_one_of_three_parts) {
    EXPECT_TRUE(SetTrackIdColor(nullptr, 0, 0));
    EXPECT_EQ(GetTrackColor(track(0)), 0x1000000);
    EXPECT_TRUE(SetTrackItemColor(track(1), ColorToNative(10, 20, 30)));
    int color = 0, r = 0, g = 0, b = 0;
    EXPECT_TRUE(GetTrackItemColor(track(1), &color, &r, &g, &b));
    EXPECT_EQ(std::vector({color, r, g, b}),
              std::vector({ColorToNative(10, 20, 30) | 0x1000000, 10, 20, 30}));
    EXPECT_TRUE(GetTrackIdColor(nullptr, 9, &color, &r, &g, &b)) << "a missing track is not tested for";
    EXPECT_EQ(color, 0);
    static int set_color;
    SetTrackColor = [](MediaTrack*, int native) { set_color = native; };
    EXPECT_TRUE(SetSelectedTrackIdRGB(nullptr, 0, 10, 20, 30));
    EXPECT_EQ(set_color, ColorToNative(10, 20, 30));
}

TEST_F(TrackState, selects_one_track_or_only_one) {
    EXPECT_TRUE(SetTrackIdSelected(nullptr, 0, true));
    EXPECT_EQ(CountSelectedTracks(nullptr), 2);
    EXPECT_TRUE(SetTrackIdOnlySelected(nullptr, 1));
    EXPECT_EQ(CountSelectedTracks(nullptr), 1);
    EXPECT_EQ(GetSelectedTrack(nullptr, 0), track(1));
    EXPECT_TRUE(SetTrackItemOnlySelected(track(2)));
    EXPECT_FALSE(SetTrackItemOnlySelected(nullptr));
    EXPECT_FALSE(SetTrackIdOnlySelected(nullptr, 9));
    EXPECT_FALSE(SetTrackIdSelected(nullptr, -1, true));
    EXPECT_EQ(GetSelectedTrack(nullptr, 0), track(2));
}

} // namespace
