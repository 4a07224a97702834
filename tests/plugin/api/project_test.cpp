// Regions and markers, numbers and the cursor, on a living project.

#include "api/project/cursor.hpp"
#include "api/project/random_numbers.hpp"
#include "api/project/regions.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <cmath>
#include <set>

namespace {

using namespace MK_FELSPAR;
using namespace mk_api::cursol;
using Texts = std::vector<std::string>;

class ProjectServices : public mk_test::BoundPlugin {
protected:
    headless::project::Project& project = workstation.project();
};

TEST_F(ProjectServices, ChangeOneFieldOfARegionOrMarkerAndKeepTheOthers) {
    const std::string name(2000, 'n');
    int number = 0, color = 0;
    project.markers.add({false, 3.0, 0.0, "cue", 7, 0x1000001});
    EXPECT_TRUE(AddRegionMarker(nullptr, 5.0, 6.0, "last", 7, 0xFF, &number) && number == 7);
    EXPECT_TRUE(AddRegionMarker(nullptr, 4.0, 5.0, name.c_str(), -1, 9, &number) && number == 1);
    EXPECT_TRUE(GetRegionMarkerIndex(nullptr, 2, &number) && number == 7) << "as displayed";
    EXPECT_TRUE(SetRegionMarkerColor(nullptr, 0, 0) && SetRegionMarkerPosition(nullptr, 2, 10.0, 12.0));
    EXPECT_TRUE(SetRegionMarkerPosition(nullptr, 1, 4.5, 5.0) && SetRegionMarkerName(nullptr, 9, "none"));
    const headless::project::Marker cue{false, 3.0, 0.0, "cue", 7, 0x1000000},
        last{true, 10.0, 12.0, "last", 7, 0x10000FF}, cut{true, 4.5, 5.0, name.substr(0, 1023), 1, 0x1000009};
    EXPECT_EQ(project.markers.all(), (std::vector{cue, cut, last}));
    EXPECT_TRUE(SetRegionMarkerName(nullptr, 1, name.c_str()) && project.markers.all()[1].name == name);
    double start = 0.0, end = 0.0;
    for (const int index : {2, 3, -1}) // past the end the outputs stay
        EXPECT_TRUE(GetRegionMarkerColor(nullptr, index, &color) && color == last.color &&
                    GetRegionMarkerPosition(nullptr, index, &start, &end) && start == 10.0 && end == 12.0);
    char text[4] = "", gone[] = "text";
    EXPECT_TRUE(GetRegionMarkerName(nullptr, 2, text, sizeof text) &&
                GetRegionMarkerName(nullptr, 3, gone, 5));
    EXPECT_EQ(std::string(text) + gone, "las");
    project.markers.add({false, 4.7, 0.0, "between", 8, 0});
    EXPECT_TRUE(DeleteAllRegion(nullptr) && project.markers.all().size() == 2 &&
                !project.markers.region_count());
}

TEST_F(ProjectServices, DrawWithinBoundsThatAreCutToTheDecimalsAndPrintLeadingZeros) {
    std::set<double> drawn;
    double value = 99.0;
    for (int i = 0; i < 1000 && GetRandomNumDouble(-1.29, 0.3, 1, &value); ++i)
        drawn.insert(std::round(value * 10.0));
    EXPECT_TRUE(drawn.size() == 16 && *drawn.begin() == -12.0 && *drawn.rbegin() == 3.0) << drawn.size();
    EXPECT_TRUE(GetRandomNumDouble(0.29, 0.29, 2, &value) && value == 0.28);
    EXPECT_FALSE(GetRandomNumDouble(1.0, 1.0, 10, &value) || GetRandomNumDouble(0.0, 3.0, 9, &value));
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
    double seconds = 0.0;
    int frame = 0;
    EXPECT_TRUE(SetPlayCursorPosition(nullptr, 0, 3.5, &seconds) && seconds == 3.5);
    EXPECT_TRUE(SetPlayCursorPosition(nullptr, -1, 2.5, &seconds) && seconds == 12.5) << "any type but 0";
    EXPECT_TRUE(SetPlayCursorPositionFrame(nullptr, 0, 30, &frame) && frame == 30);
    EXPECT_EQ(project.cursor_seconds, 1.2);
    EXPECT_TRUE(SetPlayCursorPositionFrame(nullptr, 1, 5, &frame) && frame == 255);
    project.play_state = 1;
    project.play_position_seconds = 4.0;
    EXPECT_TRUE(SetPlayCursorPosition(nullptr, 1, 2.0, &seconds) && seconds == 4.0) << "where it plays";
    EXPECT_EQ(project.cursor_seconds, 6.0);
}

} // namespace
