// Levels of an item: from real files, and for exact values from a host that delivers chosen peaks.

#include "api/media/peak_levels.hpp"
#include "api/media/peaks.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <algorithm>
#include <cmath>
#include <span>
#include <tuple>

namespace {

using Request = std::tuple<double, double, int, int, int>; // peaks per second, start, channels, count, extra
std::vector<Request> requests;
int answer = 0;
std::vector<double> maxima; ///< of as many milliseconds; 0.5 for others

/// The maxima, and minima of -0.25.
int deliver(MediaItem_Take*, double rate, double start, int channels, int count, int extra, double* buffer) {
    requests.emplace_back(rate, start, channels, count, extra);
    const std::span<double> cells(buffer, 3 * static_cast<std::size_t>(count));
    EXPECT_EQ(std::count(cells.begin(), cells.end(), 0.0), std::ssize(cells)) << "zero-filled";
    std::fill_n(buffer, count, 0.5);
    std::fill_n(buffer + count, count, -0.25);
    std::copy(maxima.begin(), maxima.end(), buffer);
    return answer;
}

class Peaks : public mk_test::BoundPlugin {
protected:
    void deliver_for(double length_seconds, double position_seconds, int delivered = 1) {
        requests.clear();
        maxima.clear();
        answer = delivered;
        item.set_position_seconds(position_seconds);
        item.set_length_seconds(length_seconds);
        GetMediaItemTake_Peaks = &deliver;
    }
    bool read() { return mk_api::mediaItem::GetMediaItemPeakList(handle(item), peaks); }

    headless::project::Item& item = add_item(mk_test::babble(0.1, 3));
    std::vector<mk_object::mk_Peak> peaks;
};

TEST_F(Peaks, AreOneForEachMillisecond) {
    deliver_for(0.0605, 7.25);
    EXPECT_TRUE(read());
    EXPECT_EQ(requests, std::vector({Request{1000.0, 7.25, 1, 61, 115}}));
    ASSERT_EQ(peaks.size(), 61u);
    EXPECT_EQ(peaks[60].Time->value, 60 * 0.001) << "from the item's start, wherever that lies";
    EXPECT_EQ(peaks[60].MaxPeak->value, -6.0206);
    EXPECT_EQ(peaks[60].MinPeak->value, -12.0412);
    EXPECT_EQ(peaks[60].get_size(), 3u) << "neither frequency nor point";
    SetMediaItemSelected(handle(item), true);
    EXPECT_TRUE(MK_FELSPAR::GetSelectedMediaIdPeakList(nullptr, 0, peaks));
    EXPECT_EQ(peaks.size(), 122u) << "appended to";
    EXPECT_FALSE(MK_FELSPAR::GetSelectedMediaIdPeakList(nullptr, 1, peaks));
}

double plain_db(double peak) {
    double linear = std::fabs(peak);
    linear = linear < 0.0001 ? 0.0001 : std::floor(linear * 10000.0 + 0.5) / 10000.0;
    return std::floor(std::log10(linear) * 20.0 * 10000.0 + 0.5) / 10000.0;
}

TEST_F(Peaks, AreRoundedBeforeAndAfterTheLogarithm) {
    std::vector<double> magnitudes{0.0, 1.5, 0.00016, 1e9};
    for (int step = 0; step < 20'000; ++step)
        for (const double offset : {-0.5, 0.0, 0.4999999, 0.5})
            magnitudes.push_back((step % 2 ? 1 : -1) * (step + offset) / 10000.0);
    deliver_for(0.001 * static_cast<double>(magnitudes.size()), 0.0);
    maxima = magnitudes;
    std::vector<mk_api::mediaItem::PeakLevel> levels;
    ASSERT_TRUE(mk_api::mediaItem::read_peak_levels(handle(item), levels));
    ASSERT_EQ(levels.size(), magnitudes.size());
    const double worked_out[] = {-80.0, 3.5218, -73.9794, 180.0};
    for (std::size_t i = 0; i < magnitudes.size(); ++i)
        ASSERT_EQ(levels[i].max_db, i < 4 ? worked_out[i] : plain_db(magnitudes[i])) << magnitudes[i];
}

TEST_F(Peaks, OfNothingLeaveTheListAlone) {
    for (const double unusable_seconds : {0.0, 3e6, 1e300}) {
        deliver_for(unusable_seconds, 0.0);
        EXPECT_FALSE(read()) << unusable_seconds;
        EXPECT_TRUE(requests.empty());
    }
    deliver_for(0.0004, 0.0);
    EXPECT_TRUE(read()) << "asked for nothing, and answered";
    for (const int nothing : {0, 0x1100000}) {
        deliver_for(0.5, 0.0, nothing);
        std::vector<mk_api::mediaItem::PeakLevel> levels;
        EXPECT_FALSE(mk_api::mediaItem::read_peak_levels(handle(item), levels));
        EXPECT_FALSE(read());
        EXPECT_TRUE(levels.empty()) << "nothing delivered";
    }
    EXPECT_FALSE(MK_FELSPAR::GetMediaItemPeakList(handle(item.track().add_item(1.0, 1.0)), peaks))
        << "no take";
    EXPECT_TRUE(peaks.empty());
}

// The host counts what it delivers in 20 bits.
TEST_F(Peaks, OfLongItemsAreReadInStretches) {
    deliver_for(1048.577, 2.0);
    EXPECT_TRUE(read());
    EXPECT_EQ(peaks.size(), 1048577u);
    EXPECT_EQ(requests, std::vector({Request{1000.0, 2.0, 1, 0xFFFFF, 115},
                                     Request{1000.0, 2.0 + 1048.575, 1, 2, 115}}));
}

} // namespace
