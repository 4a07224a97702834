// What plug-ins see of the project as a whole, its tracks and its markers, and what they leave with the host.

#include "tests/headless/workstation/host_fixture.hpp"

#include <array>
#include <limits>
#include <stdexcept>

namespace headless {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

using ProjectFunctions = HostTest;

TEST_F(ProjectFunctions, RecordPathIsTheRenderFolder) {
    const auto info = function<bool(ReaProject*, const char*, char*, bool)>("GetSetProjectInfo_String");
    std::array<char, 1024> path{"takes"};
    EXPECT_TRUE(info(nullptr, "RECORD_PATH", path.data(), true));
    path.fill('x');
    EXPECT_TRUE(info(nullptr, "RECORD_PATH", path.data(), false));
    EXPECT_STREQ(path.data(), "takes");
    EXPECT_EQ(workstation.render_folder(), std::filesystem::current_path() / "takes");
    project.file = folder / "game.rpp";
    function<void(char*, int)>("GetProjectPath")(path.data(), static_cast<int>(path.size()));
    EXPECT_EQ(std::filesystem::path(path.data()), folder / "takes");
}

TEST_F(ProjectFunctions, RegisteredFunctionsAreFoundUntilUnregistered) {
    const auto enroll = function<int(const char*, void*)>("plugin_register");
    int payload = 0;
    EXPECT_EQ(enroll("API_Mine", &payload), 1);
    EXPECT_EQ(enroll("hookcommand", &payload), 0);
    EXPECT_EQ(workstation.function("Mine"), &payload);
    EXPECT_EQ(workstation.function("API_Mine"), nullptr);
    EXPECT_EQ(enroll("-API_Mine", &payload), 1);
    EXPECT_EQ(workstation.function("Mine"), nullptr);
}

TEST_F(ProjectFunctions, OnlyOneWorkstationMayExist) {
    EXPECT_THROW(workstation::Workstation({}), std::logic_error);
}

TEST_F(ProjectFunctions, BoxesGetTheDefaultAnswerWithoutATerminal) {
    testing::internal::CaptureStderr();
    const int answer =
        function<int(const char*, const char*, int)>("ShowMessageBox")("Open the\nweb page?", "Question", 4);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Question: Open the web page? [answered No, as there is no terminal]\n");
    EXPECT_EQ(answer, 7);
}

TEST_F(ProjectFunctions, UnnamedTrackIsCalledByItsNumber) {
    char name[8] = "";
    function<bool(MediaTrack*, char*, int)>("GetTrackName")(
        workstation::Workstation::handle(project.insert_track(0)), name, 8);
    EXPECT_STREQ(name, "Track 1");
}

TEST_F(ProjectFunctions, TrackValuesAreLimited) {
    struct Value {
        const char* key;
        double written, read;
        bool is_accepted;
    };
    const auto set = function<bool(MediaTrack*, const char*, double)>("SetMediaTrackInfo_Value");
    const auto get = function<double(MediaTrack*, const char*)>("GetMediaTrackInfo_Value");
    for (const auto& [key, written, read, is_accepted] : {Value{"I_FOLDERDEPTH", 3.0, 1.0, true},
                                                          {"I_CUSTOMCOLOR", 255.0, 0.0, true},
                                                          {"I_SOLO", 1e300, 2147483647.0, true},
                                                          {"D_VOL", infinity, 1.0, false},
                                                          {"D_NOTHING", 1.0, 0.0, false}}) {
        MediaTrack* track = workstation::Workstation::handle(project.insert_track(0));
        EXPECT_EQ(set(track, key, written), is_accepted) << key << ' ' << written;
        EXPECT_EQ(get(track, key), read) << key << ' ' << written;
    }
}

TEST_F(ProjectFunctions, UnknownKeysAreReportedOnce) {
    insert_item();
    project::Item& item = insert_item();
    MediaTrack* track = workstation::Workstation::handle(item.track());
    MediaItem_Take* take = workstation::Workstation::handle(*item.active_take());
    const auto get_track = function<double(MediaTrack*, const char*)>("GetMediaTrackInfo_Value");
    const auto get_item = function<double(MediaItem*, const char*)>("GetMediaItemInfo_Value");
    const auto get_take = function<double(MediaItem_Take*, const char*)>("GetMediaItemTakeInfo_Value");
    const auto set_take = function<bool(MediaItem_Take*, const char*, double)>("SetMediaItemTakeInfo_Value");
    const auto get_set = function<bool(MediaTrack*, const char*, char*, bool)>("GetSetMediaTrackInfo_String");
    const auto address = [](void* handle) {
        return static_cast<double>(reinterpret_cast<std::uintptr_t>(handle));
    };
    EXPECT_EQ(get_track(track, "IP_TRACKNUMBER"), 2.0);
    EXPECT_EQ(get_track(workstation::Workstation::handle(project.master()), "IP_TRACKNUMBER"), -1.0);
    EXPECT_EQ(get_track(track, "P_PARTRACK"), 0.0);
    EXPECT_EQ(get_item(workstation::Workstation::handle(item), "P_TRACK"), address(track));
    EXPECT_EQ(get_item(workstation::Workstation::handle(item.track().add_item(9.0, 1.0)), "IP_ITEMNUMBER"),
              1.0);
    EXPECT_EQ(get_take(take, "P_ITEM"), address(&item));
    EXPECT_EQ(get_take(take, "IP_TAKENUMBER"), 0.0);
    EXPECT_FALSE(set_take(take, "IP_TAKENUMBER", 1.0));
    EXPECT_FALSE(set_take(nullptr, "D_NOTHING", 1.0));
    EXPECT_THAT(workstation.take_failures(), testing::IsEmpty());
    std::array<char, 1024> text{'x'};
    EXPECT_TRUE(get_set(track, "P_RAZOREDITS", text.data(), false));
    EXPECT_STREQ(text.data(), "");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(get_track(track, "I_NCHAN"), 0.0);
        EXPECT_EQ(get_track(track, "B_PHASE"), 0.0);
        EXPECT_FALSE(set_take(take, "I_NCHAN", 1.0));
        EXPECT_FALSE(get_set(track, "GUID", text.data(), false));
    }
    EXPECT_THAT(workstation.take_failures(),
                ElementsAre(tells("GetMediaTrackInfo_Value: the key \"I_NCHAN\" is not known"),
                            tells("B_PHASE"), tells("SetMediaItemTakeInfo_Value: the key \"I_NCHAN\""),
                            tells("GUID")));
}

TEST_F(ProjectFunctions, CursorStaysOnTheTimeline) {
    const auto set = function<void(ReaProject*, double, bool, bool)>("SetEditCurPos2");
    const auto get = function<double(ReaProject*)>("GetCursorPositionEx");
    set(nullptr, 3.0, false, false);
    set(nullptr, infinity, false, false);
    EXPECT_EQ(get(nullptr), 3.0);
    set(nullptr, -1.0, false, false);
    EXPECT_EQ(get(nullptr), 0.0);
    project.insert_track(0).add_item(2.0, 5.0);
    project.insert_track(1).add_item(4.0, 1.0);
    function<void()>("CSurf_GoEnd")();
    EXPECT_EQ(get(nullptr), 7.0);
}

TEST_F(ProjectFunctions, MarkersAreAddedChangedAndDeleted) {
    const auto add =
        function<int(ReaProject*, bool, double, double, const char*, int, int)>("AddProjectMarker2");
    const auto enumerate = function<int(ReaProject*, int, bool*, double*, double*, const char**, int*, int*)>(
        "EnumProjectMarkers3");
    const auto set =
        function<bool(ReaProject*, int, bool, double, double, const char*, int)>("SetProjectMarker3");
    const auto erase = function<bool(ReaProject*, int)>("DeleteProjectMarkerByIndex");
    int markers = 0;
    int regions = 0;
    const auto count = [&] {
        return function<int(ReaProject*, int*, int*)>("CountProjectMarkers")(nullptr, &markers, &regions);
    };
    EXPECT_EQ(add(nullptr, true, 2.0, 4.0, "scene", 7, 0x10000FF), 7);
    EXPECT_EQ(add(nullptr, false, 1.0, 0.0, nullptr, -1, 0), 1);
    EXPECT_EQ(add(nullptr, false, 3.0, 0.0, "last", -1, 0), 2);
    EXPECT_EQ(add(nullptr, false, infinity, 0.0, "never", -1, 0), -1);
    EXPECT_EQ(count(), 3);
    EXPECT_THAT((std::array{markers, regions}), ElementsAre(2, 1));
    bool is_region = false;
    double end = 0.0;
    const char* name = nullptr;
    int number = 0;
    EXPECT_EQ(enumerate(nullptr, 1, &is_region, nullptr, &end, &name, &number, nullptr), 2);
    // The host's own text comes back in, as scripts hand it on.
    EXPECT_TRUE(set(nullptr, number, is_region, 0.5, end, name, 0));
    const project::Marker moved{true, 0.5, 4.0, "scene", 7, 0x10000FF}; // colour 0 leaves it as it is
    EXPECT_EQ(project.markers.all().front(), moved);
    EXPECT_FALSE(set(nullptr, 7, false, 0.0, 0.0, "", 0));
    EXPECT_TRUE(erase(nullptr, 1));
    EXPECT_FALSE(erase(nullptr, 2));
    EXPECT_FALSE(erase(nullptr, -1));
    EXPECT_EQ(count(), 2);
    EXPECT_THAT((std::array{markers, regions}), ElementsAre(1, 1));
    EXPECT_EQ(project.markers.all().back().name, "last");
}

} // namespace
} // namespace headless
