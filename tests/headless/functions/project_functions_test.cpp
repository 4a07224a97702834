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

TEST_F(ProjectFunctions, CursorStaysOnTheTimeline) {
    const auto set = function<void(ReaProject*, double, bool, bool)>("SetEditCurPos2");
    const auto get = function<double(ReaProject*)>("GetCursorPositionEx");
    set(nullptr, 3.0, false, false);
    set(nullptr, infinity, false, false);
    EXPECT_EQ(get(nullptr), 3.0);
    set(nullptr, -1.0, false, false);
    EXPECT_EQ(get(nullptr), 0.0);
}

TEST_F(ProjectFunctions, MarkersKeepTheTextThatTheHostHandedOut) {
    project.markers.add({true, 2.0, 4.0, "scene", 7, 0x10000FF});
    const char* name = nullptr;
    function<int(ReaProject*, int, bool*, double*, double*, const char**, int*, int*)>("EnumProjectMarkers3")(
        nullptr, 0, nullptr, nullptr, nullptr, &name, nullptr, nullptr);
    EXPECT_TRUE((function<bool(ReaProject*, int, bool, double, double, const char*, int)>(
        "SetProjectMarker3")(nullptr, 7, true, 0.5, 4.0, name, 0)));
    const project::Marker moved{true, 0.5, 4.0, "scene", 7, 0x10000FF}; // colour 0 leaves it as it is
    EXPECT_EQ(project.markers.all().front(), moved);
}

} // namespace
} // namespace headless
