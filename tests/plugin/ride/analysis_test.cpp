// The curve's decisions, against published examples and against the plain reckoning on random levels.

#include "ride/analysis.hpp"
#include "tests/plugin/ride/plain_ride.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <random>

namespace {

using namespace mk_api::RIDESCRIBER;
using mk_api::mediaItem::PeakLevel;

/// Peaks of one window: its loudest at a place from 1 to 10, the others 10 dB lower.
void add_window(std::vector<PeakLevel>& peaks, double level, std::size_t place = 5, std::size_t size = 10) {
    for (std::size_t i = 1; i <= size; ++i)
        peaks.push_back({i == place ? -level : -level - 10.0, -level - 20.0});
}

std::vector<PeakLevel> windows_of(const std::vector<double>& levels) {
    std::vector<PeakLevel> peaks;
    for (const double level : levels)
        add_window(peaks, level);
    return peaks;
}

TEST(RideTail, counts_when_it_is_long_and_loud_enough) {
    struct Tail {
        std::size_t peaks;
        double level;
        std::size_t windows;
        double loud_count;
    };
    for (const Tail& tail : {Tail{5, 10, 0, 0}, Tail{6, 10, 1, 0}, Tail{9, 50, 0, 0}, Tail{10, 50, 1, 0},
                             Tail{15, 10, 1, 1}, Tail{16, 10, 2, 1}, Tail{16, 50, 1, 0}}) {
        std::vector<PeakLevel> peaks;
        for (std::size_t left = tail.peaks; left > 0; left -= std::min<std::size_t>(left, 10))
            add_window(peaks, tail.level, 1, std::min<std::size_t>(left, 10));
        const RideScan scan = ScanRideWindows(peaks);
        EXPECT_EQ(scan.windows.size(), tail.windows) << tail.peaks;
        EXPECT_EQ(scan.loud_count, tail.loud_count) << tail.peaks;
    }
}

TEST(RideWindows, put_their_point_at_the_loudest_peak_but_clear_of_the_edges) {
    const std::size_t expected[] = {3, 3, 3, 4, 5, 6, 7, 7, 7, 7};
    for (std::size_t place = 1; place <= 10; ++place) {
        std::vector<PeakLevel> peaks;
        add_window(peaks, 12.0, place);
        const RideScan scan = ScanRideWindows(peaks);
        EXPECT_EQ(scan.windows.at(0).pos, static_cast<double>(expected[place - 1] - 1) * 0.001) << place;
        EXPECT_EQ(scan.windows.at(0).level, 12.0);
    }
    std::vector<PeakLevel> tie(10, PeakLevel{-20.0, -30.0});
    tie[3] = tie[5] = {-6.0, -9.0};
    EXPECT_EQ(ScanRideWindows(tie).windows.at(0).pos, 3 * 0.001) << "the earlier of two equals";
    std::vector<PeakLevel> quiet;
    add_window(quiet, 50.0, 9);
    EXPECT_EQ(ScanRideWindows(quiet).windows.at(0).pos, 4 * 0.001) << "quiet: in the middle";
}

TEST(RideLadder, nests_means_of_ever_louder_windows) {
    RideScan scan = ScanRideWindows(windows_of({20, 10, 8, 6}));
    const RideLadder ladder = ComputeRideLadder(scan, 0);
    EXPECT_EQ(ladder.m1, 11.0);
    EXPECT_EQ(ladder.m2, 8.0);
    EXPECT_EQ(ladder.m3, 6.0);
    EXPECT_TRUE(std::isnan(ladder.m4));
    for (RideWindow& window : scan.windows)
        window.pos += 0.2;
    AssignPointVol(scan.windows, ladder);
    const double gains_db[] = {2.0, 2.0, 0.0, -2.0};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(scan.windows[i].point_vol, gains_db[i]) << i;
}

TEST(RidePoints, stay_at_unity_where_there_is_nothing_to_pull_towards) {
    for (const auto& levels :
         {std::vector<double>{12, 12, 12}, std::vector<double>{12}, std::vector<double>{60, 55}}) {
        RideScan scan = ScanRideWindows(windows_of(levels));
        AssignPointVol(scan.windows, ComputeRideLadder(scan, 0));
        for (const RideWindow& window : scan.windows) {
            EXPECT_EQ(window.point_vol, 0.0);
            EXPECT_EQ(window.point_value, 1.0);
        }
    }
}

struct Place {
    const char* name;
    double level;
    double pos;
    double gain_db;
};

class RideBoost : public ::testing::TestWithParam<Place> {};

TEST_P(RideBoost, is_limited_by_level_and_place) {
    std::vector<RideWindow> windows{{.pos = GetParam().pos, .level = GetParam().level, .point_value = {}}};
    AssignPointVol(windows, {.m1 = 30, .m2 = 20, .m3 = 15, .m4 = 10, .target = 12});
    EXPECT_EQ(windows[0].point_vol, GetParam().gain_db);
    EXPECT_EQ(windows[0].point_value.has_value(),
              GetParam().name != std::string("louder_than_the_target_needs"));
}

INSTANTIATE_TEST_SUITE_P(
    Windows, RideBoost,
    ::testing::Values(Place{"start_below_29", 28.9, 0.09, 4.0}, Place{"start_at_29", 29.0, 0.09, 0.0},
                      Place{"at_a_tenth_below_28", 27.0, 0.1, 4.0},
                      Place{"at_a_tenth_at_28", 28.0, 0.15, 0.0},
                      Place{"later_the_same_level", 27.0, 0.25, 0.0}, Place{"later_below_26", 25.9, 0.2, 2.0},
                      Place{"later_at_26", 26.0, 1.0, 0.0},
                      Place{"between_third_and_second_mean", 17.0, 1.0, -3.0},
                      Place{"at_the_third_mean", 15.0, 1.0, -5.0}, Place{"above_the_target", 11.0, 1.0, -1.0},
                      Place{"louder_than_the_target_needs", 13.0, 1.0, 0.0}),
    [](const auto& test) { return test.param.name; });

TEST(RideFlatPoints, differ_from_both_neighbours_by_less_than_half_a_decibel) {
    const auto flat = [](const std::vector<double>& gains) {
        std::vector<RideWindow> windows(gains.size());
        for (std::size_t i = 0; i < gains.size(); ++i)
            windows[i].point_vol = gains[i];
        return CollectFlatPoints(windows);
    };
    EXPECT_EQ(flat({0.0, 0.4, 0.7}), std::vector({1}));
    EXPECT_EQ(flat({0.0, 0.5, 0.7}), std::vector<int>());
    EXPECT_EQ(flat({1, 1, 1, 1, 1, 2}), std::vector({1, 2, 3}));
    EXPECT_EQ(flat({1, 1}), std::vector<int>());
    EXPECT_EQ(flat({}), std::vector<int>());
}

std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value); }

TEST(RideAnalysis, equals_the_plain_reckoning_bit_for_bit_on_any_levels) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> level(-80.0, 6.0);
    for (int run = 0; run < 300; ++run) {
        const std::size_t length = random() % 700;
        const double centre = level(random);
        const double spread = std::uniform_real_distribution<double>(0.0, 30.0)(random);
        std::vector<PeakLevel> peaks;
        std::vector<mk_test::PlainPeak> plain_peaks;
        for (std::size_t i = 0; i < length; ++i) {
            // A coarse grid makes ties, a fine one does not.
            const double grid = run % 2 ? 1.0 : 10000.0;
            const double db =
                std::clamp(std::round((centre + spread * (level(random) / 40.0)) * grid) / grid, -80.0, 20.0);
            peaks.push_back({db, db - 1.0});
            plain_peaks.push_back({static_cast<double>(i) * 0.001, db, db - 1.0});
        }
        const int ratio_type = static_cast<int>(random() % 7) - 1;
        RideScan scan = ScanRideWindows(peaks);
        mk_test::PlainScan plain = mk_test::plain_scan(plain_peaks);
        AssignPointVol(scan.windows, ComputeRideLadder(scan, ratio_type));
        mk_test::plain_assign(plain, ratio_type);
        ASSERT_EQ(scan.windows.size(), plain.records.size());
        for (std::size_t i = 0; i < plain.records.size(); ++i) {
            ASSERT_EQ(bits(scan.windows[i].pos), bits(plain.records[i].pos));
            ASSERT_EQ(bits(scan.windows[i].point_vol), bits(plain.records[i].point_vol));
            ASSERT_EQ(scan.windows[i].point_value.has_value(), plain.records[i].writes);
            ASSERT_EQ(bits(scan.windows[i].point_value.value_or(1.0)), bits(plain.records[i].value));
        }
        ASSERT_EQ(CollectFlatPoints(scan.windows), mk_test::plain_flat(plain));
    }
}

} // namespace
