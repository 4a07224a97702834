// Tracks found and their properties, through the functions that scripts call, on a living project.

#include "api/track/lookup.hpp"
#include "api/track/state.hpp"
#include "api/track/volume_name.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace {

using namespace MK_FELSPAR;
using namespace mk_api::track;

int redraws = 0;

class Tracks : public mk_test::BoundPlugin {
protected:
    Tracks() {
        for (std::size_t i = 0; i < 3; ++i)
            workstation.project().insert_track(i);
        SetTrackIdSelected(nullptr, 2, true);
        redraws = 0;
        UpdateArrange = [] { ++redraws; };
    }
    MediaTrack* track(std::size_t i) { return handle(*workstation.project().track(i)); }
};

TEST_F(Tracks, AreFoundAmongAllOrTheSelected) {
    EXPECT_EQ(GetTrackItemSelect(nullptr, 1, 0), track(1));
    EXPECT_EQ(GetTrackItemSelect(nullptr, 0, 1), track(2));
    EXPECT_EQ(GetTrackItemSelect(nullptr, 0, 2), nullptr);
    const int counts[] = {3, 1, 0};
    for (int type = 0; type < 3; ++type) {
        int count = -1;
        EXPECT_TRUE(GetTrackCountSelect(nullptr, type, &count));
        EXPECT_EQ(count, counts[type]);
    }
}

TEST_F(Tracks, AreMutedAndSoloedByEachForm) {
    const auto switch_and_read = [&](const char* key, auto get_item, auto get_id, auto get_selected,
                                     auto set_item, auto set_id, auto set_selected, auto all_off) {
        const auto expect_all = [&](double value) {
            for (std::size_t i = 0; i < 3; ++i)
                EXPECT_EQ(GetMediaTrackInfo_Value(track(i), key), value) << key << ' ' << i;
        };
        bool is_on = true;
        EXPECT_FALSE(get_item(track(0), &is_on)) << "the result is the state";
        EXPECT_FALSE(is_on);
        EXPECT_TRUE(set_item(track(0), true));
        EXPECT_TRUE(set_id(nullptr, 1, true));
        EXPECT_TRUE(set_selected(nullptr, 0, true));
        expect_all(1.0);
        EXPECT_TRUE(get_id(nullptr, 1, &is_on));
        EXPECT_TRUE(std::exchange(is_on, false));
        EXPECT_TRUE(get_selected(nullptr, 0, &is_on));
        EXPECT_TRUE(is_on);
        EXPECT_TRUE(all_off(nullptr));
        expect_all(0.0);
        EXPECT_FALSE(set_id(nullptr, 9, true)) << "the host's answer for no track";
    };
    switch_and_read("B_MUTE", GetTrackItemMute, GetTrackIdMute, GetSelectedTrackIdMute, SetTrackItemMute,
                    SetTrackIdMute, SetSelectedTrackIdMute, SetTrackAllMuteOFF);
    switch_and_read("I_SOLO", GetTrackItemSolo, GetTrackIdSolo, GetSelectedTrackIdSolo, SetTrackItemSolo,
                    SetTrackIdSolo, SetSelectedTrackIdSolo, SetTrackAllSoloOFF);
}

double delivered = 0.0;

TEST_F(Tracks, AreNeitherMutedNorSoloedByOddValues) {
    using Reading = std::pair<bool, bool>; // result and output
    const auto read = [](auto get, auto... where) {
        bool out = true;
        const bool result = get(where..., &out);
        return Reading(result, out);
    };
    EXPECT_EQ(read(GetTrackIdMute, nullptr, 9), Reading(false, true)) << "no track";
    EXPECT_EQ(read(GetTrackIdSolo, nullptr, 9), Reading(false, false)) << "0 from the host for no track";
    GetMediaTrackInfo_Value = [](MediaTrack*, const char*) { return delivered; };
    delivered = 2.0;
    EXPECT_EQ(read(GetTrackItemSolo, track(0)), Reading(true, true)) << "soloed in place";
    EXPECT_EQ(read(GetTrackItemMute, track(0)), Reading(false, true)) << "the output stays unwritten";
    delivered = 0.5;
    EXPECT_EQ(read(GetTrackItemSolo, track(0)), Reading(false, true));
}

TEST_F(Tracks, FlagWholeColoursAsInUse) {
    EXPECT_TRUE(SetTrackIdColor(nullptr, 0, 0));
    EXPECT_EQ(GetTrackColor(track(0)), 0x1000000);
    const int native = ColorToNative(10, 20, 30);
    EXPECT_TRUE(SetTrackItemColor(track(1), native));
    int color = 0, r = 0, g = 0, b = 0;
    EXPECT_TRUE(GetTrackItemColor(track(1), &color, &r, &g, &b));
    EXPECT_EQ(std::vector({color, r, g, b}), std::vector({native | 0x1000000, 10, 20, 30}));
    EXPECT_TRUE(GetTrackIdColor(nullptr, 9, &color, &r, &g, &b)) << "a missing track is not tested for";
    EXPECT_EQ(color, 0);
    static int set_color;
    SetTrackColor = [](MediaTrack*, int value) { set_color = value; };
    EXPECT_TRUE(SetSelectedTrackIdRGB(nullptr, 0, 10, 20, 30));
    EXPECT_EQ(set_color, native);
}

TEST_F(Tracks, AreSelectedTogetherOrAlone) {
    EXPECT_TRUE(SetTrackIdSelected(nullptr, 0, true));
    EXPECT_EQ(CountSelectedTracks(nullptr), 2);
    EXPECT_TRUE(SetTrackIdOnlySelected(nullptr, 1));
    EXPECT_EQ(CountSelectedTracks(nullptr), 1);
    EXPECT_EQ(GetSelectedTrack(nullptr, 0), track(1));
    EXPECT_FALSE(SetTrackItemOnlySelected(nullptr));
    EXPECT_FALSE(SetTrackIdOnlySelected(nullptr, 9));
    EXPECT_FALSE(SetTrackIdSelected(nullptr, -1, true));
    EXPECT_EQ(GetSelectedTrack(nullptr, 0), track(1));
}

TEST_F(Tracks, RoundDecibelsOnlyWhenRead) {
    headless::project::Track& model = *workstation.project().track(2);
    double volume = 99.0;
    EXPECT_FALSE(GetTrackIdVolume(nullptr, 3, &volume));
    EXPECT_FALSE(GetSelectedTrackIdVolume(nullptr, 3, &volume));
    EXPECT_FALSE(SetTrackIdVolume(nullptr, 3, -6.0));
    EXPECT_FALSE(SetTrackIdAddVolume(nullptr, 3, -6.0));
    EXPECT_EQ(volume, 99.0) << "there is no such track";
    model.volume = 0.5;
    EXPECT_TRUE(GetTrackItemVolume(track(2), &volume));
    EXPECT_EQ(volume, -6.02);
    EXPECT_TRUE(SetSelectedTrackIdAddVolume(nullptr, 0, -6.0));
    EXPECT_EQ(model.volume, std::exp((20.0 * std::log10(0.5) + -6.0) * 0.115129254));
    EXPECT_TRUE(SetTrackIdVolume(nullptr, 2, -6.0));
    EXPECT_EQ(model.volume, std::exp(-6.0 * 0.115129254));
    EXPECT_EQ(redraws, 2);
    model.volume = 0.0;
    EXPECT_TRUE(GetSelectedTrackIdVolume(nullptr, 0, &volume));
    EXPECT_EQ(volume, -std::numeric_limits<double>::infinity());
}

TEST_F(Tracks, CutNamesToTheBuffer) {
    EXPECT_TRUE(SetSelectedTrackIdName(nullptr, 0, "Vocal"));
    char name[5000] = "";
    EXPECT_TRUE(GetTrackIdName(nullptr, 2, name, 4));
    EXPECT_STREQ(name, "Voc");
    EXPECT_FALSE(SetTrackIdName(nullptr, 3, "x"));
    EXPECT_FALSE(SetTrackItemName(nullptr, "x"));
    EXPECT_FALSE(GetTrackIdName(nullptr, 3, name, sizeof name));
    EXPECT_STREQ(name, "Voc") << "untouched when there is no name";
    workstation.project().track(2)->name = std::string(3000, 'n');
    EXPECT_TRUE(GetTrackItemName(track(2), name, sizeof name));
    EXPECT_EQ(std::strlen(name), 1023u) << "no host writes past the library's own buffer";
}

} // namespace
