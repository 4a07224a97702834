// Regions and markers, numbers and the cursor, on a live project.

#include "api/project/cursor.hpp"
#include "api/project/random_numbers.hpp"
#include "api/project/regions.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <cmath>
#include <set>

namespace {

using namespace MK_FELSPAR;
using namespace mk_api::cursol;
using headless::project::Marker;
using Texts = std::vector<std::string>;

class ProjectServices : public mk_test::BoundPlugin {
protected:
    headless::project::Project& project = workstation.project();
};

TEST_F(ProjectServices, AddRegionsByTheirNumbers) {
    const std::string name(2000, 'n');
    int numbers[3] = {};
    project.markers.add({false, 3.0, 0.0, "cue", 7, 0});
    EXPECT_TRUE(AddRegionMarker(nullptr, 5.0, 6.0, "last", 7, 0xFF, &numbers[0]));
    EXPECT_TRUE(AddRegionMarker(nullptr, 4.0, 5.0, name.c_str(), -1, 9, &numbers[1]));
    EXPECT_TRUE(GetRegionMarkerIndex(nullptr, 2, &numbers[2]));
    EXPECT_EQ(std::vector(numbers, numbers + 3), std::vector({7, 1, 7}));
    EXPECT_EQ(project.markers.all()[1], (Marker{true, 4.0, 5.0, name, 1, 0x1000009}));
    EXPECT_TRUE(DeleteAllRegion(nullptr));
    EXPECT_EQ(project.markers.all(), std::vector({Marker{false, 3.0, 0.0, "cue", 7, 0}}));
}

TEST_F(ProjectServices, ChangeOneFieldOfARegionOrMarker) {
    const std::string name(2000, 'n');
    Marker cue{false, 3.0, 0.0, "cue", 7, 0x1000001}, scene{true, 4.0, 5.0, name, 1, 9},
        last{true, 5.0, 6.0, "last", 7, 255};
    for (const Marker& marker : {cue, scene, last})
        project.markers.add(marker);
    EXPECT_TRUE(SetRegionMarkerColor(nullptr, 0, 0));
    EXPECT_TRUE(SetRegionMarkerPosition(nullptr, 1, 4.5, 5.0));
    EXPECT_TRUE(SetRegionMarkerName(nullptr, 2, name.c_str()));
    EXPECT_TRUE(SetRegionMarkerName(nullptr, 9, "no such marker"));
    cue.color = 0x1000000;
    scene.position_seconds = 4.5;
    scene.name.resize(1023); // what the library's own buffer holds
    last.name = name;
    EXPECT_EQ(project.markers.all(), (std::vector{cue, scene, last}));
}

TEST_F(ProjectServices, LeaveOutputsOfMissingRegionsUnwritten) {
    project.markers.add({true, 10.0, 12.0, "last", 7, 0xFF});
    double start = 0.0, end = 0.0;
    int color = 0;
    for (const int index : {0, 1, -1}) {
        EXPECT_TRUE(GetRegionMarkerColor(nullptr, index, &color));
        EXPECT_TRUE(GetRegionMarkerPosition(nullptr, index, &start, &end));
        EXPECT_EQ(std::tuple(color, start, end), std::tuple(0xFF, 10.0, 12.0)) << index;
    }
    char cut[4] = "", missing[] = "text";
    EXPECT_TRUE(GetRegionMarkerName(nullptr, 0, cut, sizeof cut));
    EXPECT_STREQ(cut, "las");
    EXPECT_TRUE(GetRegionMarkerName(nullptr, 1, missing, 5));
    EXPECT_STREQ(missing, "");
}

TEST_F(ProjectServices, DrawNumbersWithinBoundsInAnyOrder) {
    std::set<double> drawn;
    double value = 99.0;
    for (int i = 0; i < 1000; ++i) { // bounds are cut to the decimals
        const bool is_drawn = i % 2 == 0 ? GetRandomNumDouble(-1.29, 0.3, 1, &value)
                                         : GetRandomNumDouble(0.3, -1.29, 1, &value);
        EXPECT_TRUE(is_drawn);
        drawn.insert(std::round(value * 10.0));
    }
    EXPECT_EQ(drawn.size(), 16u);
    EXPECT_EQ(*drawn.begin(), -12.0);
    EXPECT_EQ(*drawn.rbegin(), 3.0);
    EXPECT_TRUE(GetRandomNumDouble(0.29, 0.29, 2, &value));
    EXPECT_EQ(value, 0.28);
    EXPECT_FALSE(GetRandomNumDouble(1.0, 1.0, 10, &value));
    EXPECT_FALSE(GetRandomNumDouble(0.0, 3.0, 9, &value));
}

TEST_F(ProjectServices, PrintLeadingZeros) {
    Texts printed;
    for (const auto& [number, digits] :
         {std::pair(7, 3), {1234, 3}, {-5, 3}, {-12, 3}, {-5, 2147483647}, {1, 0}}) {
        char buffer[6] = "kept";
        EXPECT_EQ(FormatNumDigit(number, digits, buffer, sizeof buffer), digits > 0);
        printed.emplace_back(buffer);
    }
    EXPECT_EQ(printed, (Texts{"007", "1234", "-005", "-12", "-0000", "kept"}));
}

TEST_F(ProjectServices, MoveTheCursorFromTheStartOrTheEnd) {
    project.insert_track(0).add_item(2.0, 8.0);
    project.frame_rate = 25.0;
    const auto moved = [](int type, double offset) {
        double seconds = 0.0;
        EXPECT_TRUE(SetPlayCursorPosition(nullptr, type, offset, &seconds));
        return seconds;
    };
    EXPECT_EQ(moved(0, 3.5), 3.5);
    EXPECT_EQ(moved(-1, 2.5), 12.5) << "any type but 0";
    int frame = 0;
    EXPECT_TRUE(SetPlayCursorPositionFrame(nullptr, 1, 5, &frame));
    EXPECT_EQ(frame, 255);
    EXPECT_TRUE(SetPlayCursorPositionFrame(nullptr, 0, 30, &frame));
    EXPECT_EQ(frame, 30);
    EXPECT_EQ(project.cursor_seconds, 1.2);
    project.play_state = 1;
    project.play_position_seconds = 4.0;
    EXPECT_EQ(moved(1, 2.0), 4.0) << "where it plays";
    EXPECT_EQ(project.cursor_seconds, 6.0);
}

} // namespace
