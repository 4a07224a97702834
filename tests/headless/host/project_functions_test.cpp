#include "tests/headless/host/host_fixture.hpp"

#include <array>
#include <stdexcept>

namespace headless {
namespace {

using ProjectFunctions = HostTest;

using ProjectString = bool(ReaProject*, const char*, char*, bool);

TEST_F(ProjectFunctions, tell_the_folder_that_renders_go_to) {
    std::array<char, 1024> path{};
    char relative[] = "takes";
    EXPECT_TRUE(call<ProjectString>("GetSetProjectInfo_String", nullptr, "RECORD_PATH", relative, true));
    EXPECT_TRUE(call<ProjectString>("GetSetProjectInfo_String", nullptr, "RECORD_PATH", path.data(), false));
    EXPECT_STREQ(path.data(), "takes");
    EXPECT_EQ(workstation.render_folder(), std::filesystem::current_path() / "takes");
    workstation.project().file = folder / "game.rpp";
    call<void(char*, int)>("GetProjectPath", path.data(), static_cast<int>(path.size()));
    EXPECT_EQ(std::filesystem::path(path.data()), folder / "takes");
    EXPECT_FALSE(call<ProjectString>("GetSetProjectInfo_String", nullptr, "NOTHING", path.data(), false));
}

TEST_F(ProjectFunctions, move_the_cursor) {
    using SetCursor = void(ReaProject*, double, bool, bool);
    insert_level("line.wav", 0.5F, 0.5, 3.0);
    call<void()>("CSurf_GoEnd");
    EXPECT_EQ(call<double(ReaProject*)>("GetCursorPositionEx", nullptr), 3.5);
    call<SetCursor>("SetEditCurPos2", nullptr, -1.0, true, true);
    EXPECT_EQ(call<double(ReaProject*)>("GetCursorPositionEx", nullptr), 0.0);
    EXPECT_EQ(call<int()>("GetPlayState"), 0);
    bool drop_frame = true;
    EXPECT_EQ((call<double(ReaProject*, bool*)>("TimeMap_curFrameRate", nullptr, &drop_frame)), 24.0);
    EXPECT_FALSE(drop_frame);
}

TEST_F(ProjectFunctions, keep_what_plugins_register) {
    using Register = int(const char*, void*);
    int payload = 0;
    EXPECT_EQ(call<Register>("plugin_register", "API_Mine", &payload), 1);
    EXPECT_EQ(call<Register>("plugin_register", "APIdef_Mine", &payload), 1);
    EXPECT_EQ(call<Register>("plugin_register", "hookcommand", &payload), 0);
    EXPECT_EQ(workstation.function("Mine"), &payload);
    EXPECT_EQ(workstation.function("API_Mine"), nullptr);
    EXPECT_EQ(call<Register>("plugin_register", "-API_Mine", &payload), 1);
    EXPECT_EQ(workstation.function("Mine"), nullptr);
    EXPECT_EQ(workstation.function("NoSuchFunction"), nullptr);
    EXPECT_EQ(workstation.function(nullptr), nullptr);
}

TEST_F(ProjectFunctions, serve_one_workstation_at_a_time) { EXPECT_THROW(Workstation(), std::logic_error); }

TEST_F(ProjectFunctions, answer_boxes_by_default_when_there_is_no_terminal) {
    testing::internal::CaptureStderr();
    const int answer =
        call<int(const char*, const char*, int)>("ShowMessageBox", "Open the\nweb page?", "Question", 4);
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_EQ(answer, 7);
    EXPECT_EQ(told, "Question: Open the web page? [answered No, as there is no terminal]\n");
}

} // namespace
} // namespace headless
