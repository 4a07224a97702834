#include "tests/headless/host/host_fixture.hpp"

#include <limits>

namespace headless {
namespace {

using TrackFunctions = HostTest;

TEST_F(TrackFunctions, name_tracks_by_number_until_they_have_a_name) {
    Project& project = workstation.project();
    project.insert_track(0);
    char name[8] = "";
    const auto name_of = [&](Track& track) {
        EXPECT_TRUE(
            (call<bool(MediaTrack*, char*, int)>("GetTrackName", Workstation::handle(track), name, 8)));
        return std::string(name);
    };
    EXPECT_EQ(name_of(*project.track(0)), "Track 1");
    EXPECT_EQ(name_of(project.master()), "MASTER");
    char given[] = "dialogue";
    using NameFunction = bool(MediaTrack*, const char*, char*, bool);
    EXPECT_TRUE(call<NameFunction>("GetSetMediaTrackInfo_String", Workstation::handle(*project.track(0)),
                                   "P_NAME", given, true));
    EXPECT_EQ(name_of(*project.track(0)), "dialogu");
    EXPECT_FALSE(call<NameFunction>("GetSetMediaTrackInfo_String", Workstation::handle(project.master()),
                                    "P_NAME", given, true));
}

struct ValueCase {
    const char* name;
    const char* key;
    double written;
    bool accepted;
    double read;
};

class TrackValueTest : public HostTest, public testing::WithParamInterface<ValueCase> {};

TEST_P(TrackValueTest, is_kept_or_refused) {
    MediaTrack* track = Workstation::handle(workstation.project().insert_track(0));
    const ValueCase& value = GetParam();
    EXPECT_EQ((call<bool(MediaTrack*, const char*, double)>("SetMediaTrackInfo_Value", track, value.key,
                                                            value.written)),
              value.accepted);
    EXPECT_EQ((call<double(MediaTrack*, const char*)>("GetMediaTrackInfo_Value", track, value.key)),
              value.read);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, TrackValueTest,
    testing::Values(ValueCase{"volume", "D_VOL", 0.5, true, 0.5}, ValueCase{"mute", "B_MUTE", 2.0, true, 1.0},
                    ValueCase{"solo", "I_SOLO", 6.0, true, 6.0},
                    ValueCase{"folder_opens_once", "I_FOLDERDEPTH", 3.0, true, 1.0},
                    ValueCase{"folder_closes", "I_FOLDERDEPTH", -2.0, true, -2.0},
                    ValueCase{"color_without_its_flag", "I_CUSTOMCOLOR", 255.0, true, 0.0},
                    ValueCase{"black", "I_CUSTOMCOLOR", 16777216.0, true, 16777216.0},
                    ValueCase{"number_beyond_int", "I_SOLO", 1e300, true, 2147483647.0},
                    ValueCase{"no_number", "D_VOL", std::numeric_limits<double>::quiet_NaN(), false, 1.0},
                    ValueCase{"unknown_key", "D_NOTHING", 1.0, false, 0.0}),
    [](const auto& test) { return test.param.name; });

TEST_F(TrackFunctions, select_and_color_tracks) {
    Project& project = workstation.project();
    call<void(int, bool)>("InsertTrackAtIndex", -5, true);
    call<void(int, bool)>("InsertTrackAtIndex", 99, true);
    ASSERT_EQ(project.tracks().size(), 2U);
    MediaTrack* first = Workstation::handle(*project.track(0));
    MediaTrack* second = Workstation::handle(*project.track(1));
    call<void(MediaTrack*, bool)>("SetTrackSelected", first, true);
    project.master().set_selected(true);
    EXPECT_EQ((call<int(ReaProject*, bool)>("CountSelectedTracks2", nullptr, true)), 2);
    call<void(MediaTrack*)>("SetOnlyTrackSelected", second);
    EXPECT_EQ((call<MediaTrack*(ReaProject*, int)>("GetSelectedTrack", nullptr, 0)), second);
    EXPECT_EQ((call<int(ReaProject*, bool)>("CountSelectedTracks2", nullptr, true)), 1);
    EXPECT_EQ(call<int(MediaTrack*)>("GetTrackColor", first), 0);
    call<void(MediaTrack*, int)>("SetTrackColor", first, 0);
    EXPECT_EQ(call<int(MediaTrack*)>("GetTrackColor", first), 0x1000000) << "black is a colour";
}

} // namespace
} // namespace headless
