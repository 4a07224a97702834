#include "tests/headless/host/host_fixture.hpp"

#include <limits>

namespace headless {
namespace {

using MarkerFunctions = HostTest;

using EnumFunction = int(ReaProject*, int, bool*, double*, double*, const char**, int*, int*);
using AddFunction = int(ReaProject*, bool, double, double, const char*, int, int);
using SetFunction = bool(ReaProject*, int, bool, double, double, const char*, int);

TEST_F(MarkerFunctions, enumerate_change_and_delete) {
    EXPECT_EQ(call<AddFunction>("AddProjectMarker2", nullptr, true, 2.0, 4.0, "scene", 7, 0x10000FF), 7);
    EXPECT_EQ(call<AddFunction>("AddProjectMarker2", nullptr, false, 1.0, 0.0, nullptr, -1, 0), 1);
    EXPECT_EQ(call<AddFunction>("AddProjectMarker2", nullptr, false, std::numeric_limits<double>::infinity(),
                                0.0, "never", -1, 0),
              -1);
    bool is_region = false;
    double position = 0.0;
    double end = 0.0;
    const char* name = nullptr;
    int number = 0;
    int color = 0;
    EXPECT_EQ(call<EnumFunction>("EnumProjectMarkers3", nullptr, 1, &is_region, &position, &end, &name,
                                 &number, &color),
              2);
    EXPECT_TRUE(is_region);
    EXPECT_EQ(end, 4.0);
    // The host's own text comes back in, as scripts hand it on.
    EXPECT_TRUE(call<SetFunction>("SetProjectMarker3", nullptr, number, true, 0.5, end, name, 0));
    EXPECT_EQ(call<EnumFunction>("EnumProjectMarkers3", nullptr, 0, nullptr, nullptr, nullptr, &name, nullptr,
                                 &color),
              1);
    EXPECT_STREQ(name, "scene");
    EXPECT_EQ(color, 0x10000FF) << "colour 0 leaves it as it is";
    EXPECT_FALSE(call<SetFunction>("SetProjectMarker3", nullptr, 0, false, 0.0, 0.0, "", 0));

    int markers = 0;
    int regions = 0;
    EXPECT_EQ((call<int(ReaProject*, int*, int*)>("CountProjectMarkers", nullptr, &markers, &regions)), 2);
    EXPECT_EQ(markers, 1);
    EXPECT_EQ(regions, 1);
    EXPECT_TRUE((call<bool(ReaProject*, int)>("DeleteProjectMarkerByIndex", nullptr, 0)));
    EXPECT_FALSE((call<bool(ReaProject*, int)>("DeleteProjectMarkerByIndex", nullptr, 1)));
    EXPECT_EQ(call<EnumFunction>("EnumProjectMarkers3", nullptr, 1, &is_region, &position, &end, &name,
                                 &number, &color),
              0);
}

TEST_F(MarkerFunctions, take_colors_apart_as_they_were_put_together) {
    int red = 0;
    int green = 0;
    int blue = 0;
    const int color = call<int(int, int, int)>("ColorToNative", 1, 2, 255);
    EXPECT_EQ(color & 0x1000000, 0);
    call<void(int, int*, int*, int*)>("ColorFromNative", color | 0x1000000, &red, &green, &blue);
    EXPECT_EQ((std::vector{red, green, blue}), (std::vector{1, 2, 255}));
}

} // namespace
} // namespace headless
