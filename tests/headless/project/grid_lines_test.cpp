#include "headless/project/grid_lines.hpp"
#include "headless/project/project.hpp"

#include <gtest/gtest.h>

namespace headless::project {
namespace {

struct GridLines : testing::Test {
    GridLines() { project.tempo_bpm = 60.0; } // a quarter note a second, 4/4

    void expect_lines(double at, double previous, double closest, double next) {
        SCOPED_TRACE(at);
        EXPECT_NEAR(previous_grid_line(project, at), previous, 1e-9);
        EXPECT_NEAR(closest_grid_line(project, at), closest, 1e-9);
        EXPECT_NEAR(next_grid_line(project, at), next, 1e-9);
    }

    Project project;
};

TEST_F(GridLines, LieADivisionApart) {
    project.grid.division_quarters = 0.5;
    expect_lines(1.6, 1.5, 1.5, 2.0);
    expect_lines(1.5, 1.0, 1.5, 2.0);
    expect_lines(0.0, 0.0, 0.0, 0.5);
    expect_lines(-1.2, 0.0, 0.0, 0.0);
    EXPECT_EQ(snapped(project, 1.6), 1.5);
    project.grid.snaps = false;
    EXPECT_EQ(snapped(project, 1.6), 1.6);
}

TEST_F(GridLines, BeginAnewAtEachMeasure) {
    project.grid.division_quarters = 1.5; // lines at 0, 1.5, 3 of four quarter notes
    expect_lines(3.2, 3.0, 3.0, 4.0);
    expect_lines(4.1, 4.0, 4.0, 5.5);
    expect_lines(4.0, 3.0, 4.0, 5.5);
    project.tempo_map.set_points({{6.0, 60.0, false, true, Meter{3, 4}}});
    expect_lines(5.8, 5.5, 6.0, 6.0);
    expect_lines(6.0, 5.5, 6.0, 7.5);
}

TEST_F(GridLines, MaySwingOrStandForMeasures) {
    project.grid = {true, 0.5, Grid::Swing::on, 0.5}; // every second line an eighth of a quarter note late
    expect_lines(0.6, 0.0, 0.625, 0.625);
    expect_lines(0.7, 0.625, 0.625, 1.0);
    project.grid.swing = Grid::Swing::measures;
    expect_lines(5.0, 4.0, 4.0, 8.0);
    project.grid = {.division_quarters = 8.0};
    expect_lines(5.0, 0.0, 8.0, 8.0);
    expect_lines(8.0, 0.0, 8.0, 16.0);
    project.grid.division_quarters = 0.0;
    EXPECT_NEAR(closest_grid_line(project, 5.0), 5.0, 1e-3);
}

} // namespace
} // namespace headless::project
