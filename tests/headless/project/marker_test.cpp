#include "headless/project/marker.hpp"

#include <gtest/gtest.h>

namespace headless {
namespace {

TEST(MarkerList, numbers_markers_and_regions_apart_and_fills_gaps) {
    MarkerList markers;
    EXPECT_EQ(markers.add({.position_seconds = 5.0, .number = 1}), 1);
    EXPECT_EQ(markers.add({.is_region = true, .position_seconds = 1.0, .end_seconds = 2.0, .number = -1}), 1);
    EXPECT_EQ(markers.add({.is_region = true, .position_seconds = 3.0, .end_seconds = 4.0, .number = 3}), 3);
    EXPECT_EQ(markers.add({.is_region = true, .position_seconds = 4.0, .end_seconds = 5.0, .number = 3}), 2);
    EXPECT_EQ(markers.add({.position_seconds = 0.0, .number = 1}), 1) << "markers may share a number";
    EXPECT_EQ(markers.region_count(), 3U);
    EXPECT_EQ(markers.all().front().position_seconds, 0.0);
}

} // namespace
} // namespace headless
