// What plug-ins see of the project as a whole, its tracks and its markers, and what they leave with the host.

#include "tests/headless/host/host_fixture.hpp"

#include <array>
#include <limits>
#include <stdexcept>

namespace headless {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

using ProjectFunctions = HostTest;

TEST_F(ProjectFunctions, tell_the_folder_that_renders_go_to) {
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
    EXPECT_FALSE(info(nullptr, "NOTHING", path.data(), false));
}

TEST_F(ProjectFunctions, keep_what_plugins_register_until_it_is_withdrawn) {
    const auto enroll = function<int(const char*, void*)>("plugin_register");
    int payload = 0;
    EXPECT_EQ(enroll("API_Mine", &payload), 1);
    EXPECT_EQ(enroll("APIdef_Mine", &payload), 1);
    EXPECT_EQ(enroll("hookcommand", &payload), 0);
    EXPECT_EQ(workstation.function("Mine"), &payload);
    EXPECT_EQ(workstation.function("API_Mine"), nullptr);
    EXPECT_EQ(enroll("-API_Mine", &payload), 1);
    EXPECT_EQ(workstation.function("Mine"), nullptr);
    EXPECT_EQ(workstation.function(nullptr), nullptr);
}

TEST_F(ProjectFunctions, serve_one_workstation_at_a_time) { EXPECT_THROW(Workstation(), std::logic_error); }

TEST_F(ProjectFunctions, answer_boxes_by_default_when_there_is_no_terminal) {
    testing::internal::CaptureStderr();
    const int answer =
        function<int(const char*, const char*, int)>("ShowMessageBox")("Open the\nweb page?", "Question", 4);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Question: Open the web page? [answered No, as there is no terminal]\n");
    EXPECT_EQ(answer, 7);
}

TEST_F(ProjectFunctions, name_a_track_without_a_name_by_its_number) {
    const auto get_name = function<bool(MediaTrack*, char*, int)>("GetTrackName");
    Track& track = project.insert_track(0);
    char name[8] = "";
    EXPECT_TRUE(get_name(Workstation::handle(track), name, 8));
    EXPECT_STREQ(name, "Track 1");
}

TEST_F(ProjectFunctions, keep_or_refuse_the_values_of_a_track) {
    struct Value {
        const char* key;
        double written;
        bool is_accepted;
        double read;
    };
    const auto set = function<bool(MediaTrack*, const char*, double)>("SetMediaTrackInfo_Value");
    const auto get = function<double(MediaTrack*, const char*)>("GetMediaTrackInfo_Value");
    for (const auto& [key, written, is_accepted, read] : {Value{"I_FOLDERDEPTH", 3.0, true, 1.0},
                                                          {"I_FOLDERDEPTH", -2.0, true, -2.0},
                                                          {"I_CUSTOMCOLOR", 255.0, true, 0.0},
                                                          {"I_SOLO", 1e300, true, 2147483647.0},
                                                          {"D_VOL", infinity, false, 1.0},
                                                          {"D_NOTHING", 1.0, false, 0.0}}) {
        MediaTrack* track = Workstation::handle(project.insert_track(0));
        EXPECT_EQ(set(track, key, written), is_accepted) << key << ' ' << written;
        EXPECT_EQ(get(track, key), read) << key << ' ' << written;
    }
}

TEST_F(ProjectFunctions, enumerate_and_change_markers) {
    const auto add =
        function<int(ReaProject*, bool, double, double, const char*, int, int)>("AddProjectMarker2");
    const auto enumerate = function<int(ReaProject*, int, bool*, double*, double*, const char**, int*, int*)>(
        "EnumProjectMarkers3");
    const auto set =
        function<bool(ReaProject*, int, bool, double, double, const char*, int)>("SetProjectMarker3");
    EXPECT_EQ(add(nullptr, true, 2.0, 4.0, "scene", 7, 0x10000FF), 7);
    EXPECT_EQ(add(nullptr, false, 1.0, 0.0, nullptr, -1, 0), 1);
    EXPECT_EQ(add(nullptr, false, infinity, 0.0, "never", -1, 0), -1);
    bool is_region = false;
    double position = 0.0;
    double end = 0.0;
    const char* name = nullptr;
    int number = 0;
    int color = 0;
    EXPECT_EQ(enumerate(nullptr, 1, &is_region, &position, &end, &name, &number, &color), 2);
    EXPECT_TRUE(is_region);
    EXPECT_EQ(end, 4.0);
    // The host's own text comes back in, as scripts hand it on.
    EXPECT_TRUE(set(nullptr, number, true, 0.5, end, name, 0));
    EXPECT_EQ(enumerate(nullptr, 0, nullptr, nullptr, nullptr, &name, nullptr, &color), 1);
    EXPECT_STREQ(name, "scene");
    EXPECT_EQ(color, 0x10000FF) << "colour 0 leaves it as it is";
    EXPECT_FALSE(set(nullptr, 7, false, 0.0, 0.0, "", 0));
}

} // namespace
} // namespace headless
