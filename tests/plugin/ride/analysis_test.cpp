// The curve's decisions, against an example worked out by hand and against the plain reckoning on random
// levels.

#include "ride/analysis.hpp"
#include "tests/plugin/ride/plain_ride.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace {

using namespace mk_api::RIDESCRIBER;

TEST(RideAnalysis, PullsMiddlingWindowsTowardsTheSecondMean) {
    mk_test::Peaks peaks(200, {-60.0, -60.0}); // quiet, so that the windows that count are not at the start
    for (const double level : {20.0, 10.0, 8.0, 6.0})
        peaks.insert(peaks.end(), 10, {-level, -level - 10.0});
    const RideScan scan = ScanRideWindows(peaks);
    const RideLadder ladder = ComputeRideLadder(scan, 0); // means of 11, 8 and 6, and no fourth
    std::vector<double> gains_db;
    for (std::size_t i = 19; i < scan.windows.size(); ++i)
        gains_db.push_back(AssignPointVol(scan.windows[i], ladder).point_vol);
    EXPECT_EQ(gains_db, std::vector({0.0, 2.0, 2.0, 0.0, -2.0}));
}

double four_decimals(double level_db) { return std::round(level_db * 10000.0) / 10000.0; }

TEST(RideAnalysis, EqualsThePlainReckoning) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> any_level(-80.0, 6.0), any_spread(0.0, 30.0);
    for (int run = 0; run < 500; ++run) {
        // A coarse grid makes ties and levels right at the limits, a fine one does not.
        const double grid = run % 2 ? 2.0 : 10000.0;
        const double centre = any_level(random), spread = any_spread(random);
        mk_test::Peaks peaks(random() % 700);
        for (auto& [max_db, min_db] : peaks) {
            const double db = centre + spread * any_level(random) / 40.0;
            max_db = std::clamp(std::round(db * grid) / grid, -80.0, 20.0);
            min_db = four_decimals(max_db - 1.0 + static_cast<double>(random() % 3));
        }
        const int ratio_type = static_cast<int>(random() % 7) - 1;
        const RideScan scan = ScanRideWindows(peaks);
        const RideLadder ladder = ComputeRideLadder(scan, ratio_type);
        mk_test::PlainScan plain = mk_test::plain_scan(peaks);
        mk_test::plain_assign(plain, ratio_type);
        ASSERT_EQ(scan.windows.size(), plain.windows.size());
        for (std::size_t i = 0; i < plain.windows.size(); ++i) {
            const RidePoint point = AssignPointVol(scan.windows[i], ladder);
            ASSERT_EQ(scan.windows[i].position_seconds(), plain.windows[i].pos);
            ASSERT_EQ(point.point_vol, plain.windows[i].point_vol);
            ASSERT_EQ(point.value, plain.windows[i].point_value);
        }
        ASSERT_EQ(CollectFlatPoints(scan.windows, ladder), mk_test::plain_flat(plain));
    }
}

} // namespace
