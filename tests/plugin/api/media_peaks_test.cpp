// Levels of an item: from real files, and for exact values from a host that delivers chosen peaks.

#include "api/media/peak_levels.hpp"
#include "api/media/peaks.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <algorithm>
#include <cmath>
#include <random>
#include <span>

namespace {

using mk_object::mk_Peak;

struct Request {
    double rate;
    double start;
    int channels;
    int count;
    int extra;
    bool has_buffer;
    bool operator==(const Request&) const = default;
};

std::vector<Request> requests;
std::vector<double> maxima;
std::vector<double> minima;
int answer = 0;

int deliver(MediaItem_Take*, double rate, double start, int channels, int count, int extra, double* buffer) {
    requests.push_back({rate, start, channels, count, extra, buffer != nullptr});
    const auto copy = [count](const std::vector<double>& from, double* to) {
        std::copy_n(from.begin(), std::min(from.size(), static_cast<std::size_t>(count)), to);
    };
    if (buffer) {
        const std::span<double> cells(buffer, 3 * static_cast<std::size_t>(count));
        EXPECT_EQ(std::ranges::count(cells, 0.0), std::ssize(cells)) << "zero-filled";
        copy(maxima, buffer);
        copy(minima, buffer + count);
    }
    return answer;
}

class Peaks : public mk_test::BoundPlugin {
protected:
    Peaks() {
        requests.clear();
        maxima.clear();
        minima.clear();
        answer = 1;
    }
    void deliver_for(double length_seconds, double position_seconds = 0.0) {
        item.set_position_seconds(position_seconds);
        item.set_length_seconds(length_seconds);
        GetMediaItemTake_Peaks = &deliver;
    }
    bool read() { return mk_api::mediaItem::GetMediaItemPeakList(handle(item), peaks); }

    headless::Item& item = add_item(mk_test::babble(0.1, 8000, 3));
    std::vector<mk_Peak> peaks;
};

double plain_db(double peak) {
    double linear = std::fabs(peak);
    linear = linear < 0.0001 ? 0.0001 : std::floor(linear * 10000.0 + 0.5) / 10000.0;
    return std::floor(std::log10(linear) * 20.0 * 10000.0 + 0.5) / 10000.0;
}

TEST_F(Peaks, asks_the_host_once_for_a_millisecond_each) {
    deliver_for(0.0605, 7.25);
    EXPECT_TRUE(read());
    EXPECT_EQ(requests, std::vector({Request{1000.0, 7.25, 1, 61, 115, true}}));
    ASSERT_EQ(peaks.size(), 61u);
    EXPECT_EQ(peaks[60].Time->value, 60 * 0.001) << "from the item's start, wherever that lies";
    EXPECT_FALSE(peaks[0].Frequency->exists || peaks[0].Pos->exists || peaks[0].PointVol->exists);
    EXPECT_EQ(peaks[0].get_size(), 3u);
}

TEST_F(Peaks, converts_magnitudes_with_two_roundings) {
    maxima = {0.0, 1.0, 1.5, 0.00004, 0.00016, 0.5, 1e9};
    minima = {-0.5, -0.0001, -0.00009999, 1.0, -1.63839, -1.63841, -1.0};
    deliver_for(0.007);
    EXPECT_TRUE(read());
    EXPECT_EQ(peaks[0].MaxPeak->value, -80.0);
    EXPECT_EQ(peaks[0].MinPeak->value, peaks[5].MaxPeak->value) << "the sign does not matter";
    EXPECT_EQ(peaks[1].MaxPeak->value, 0.0);
    EXPECT_EQ(peaks[2].MaxPeak->value, 3.5218);
    EXPECT_EQ(peaks[3].MaxPeak->value, -80.0);
    EXPECT_EQ(peaks[4].MaxPeak->value, -73.9794);
    EXPECT_EQ(peaks[6].MaxPeak->value, 180.0);
}

TEST_F(Peaks, equal_the_plain_reckoning_bit_for_bit) {
    std::mt19937 random(1);
    std::uniform_real_distribution<double> exponent(-5.0, 1.0);
    for (int i = 0; i < 200'000; ++i) {
        const double peak = std::pow(10.0, exponent(random));
        ASSERT_EQ(mk_api::mediaItem::peak_db(peak), plain_db(peak)) << peak;
    }
    for (int step = 0; step < 20'000; ++step)
        for (const double offset : {-0.5, 0.0, 0.4999999, 0.5}) {
            const double peak = (step + offset) / 10000.0;
            ASSERT_EQ(mk_api::mediaItem::peak_db(peak), plain_db(peak)) << peak;
        }
}

TEST_F(Peaks, read_a_real_file_to_its_true_extremes) {
    std::vector<float> samples(80, 0.0f);
    samples[9] = 0.5f;
    samples[71] = -0.25f;
    headless::Item& real = add_item(samples, 3.0, "steps.wav");
    EXPECT_TRUE(MK_FELSPAR::GetMediaIdPeakList(nullptr, 1, peaks));
    ASSERT_EQ(peaks.size(), 10u);
    EXPECT_EQ(peaks[1].MaxPeak->value, plain_db(0.5));
    EXPECT_EQ(peaks[8].MinPeak->value, plain_db(-0.25));
    EXPECT_EQ(peaks[0].MaxPeak->value, -80.0);
    SetMediaItemSelected(handle(real), true);
    EXPECT_TRUE(MK_FELSPAR::GetSelectedMediaIdPeakList(nullptr, 0, peaks));
    EXPECT_EQ(peaks.size(), 20u) << "appended to";
    EXPECT_FALSE(MK_FELSPAR::GetSelectedMediaIdPeakList(nullptr, 1, peaks));
}

TEST_F(Peaks, leave_the_list_alone_when_there_is_nothing) {
    struct Nothing {
        double length_seconds;
        int answer;
        std::size_t requests;
        bool result;
    };
    peaks.emplace_back();
    for (const Nothing& nothing :
         {Nothing{0.0, 1, 0, false}, Nothing{0.0004, 0, 1, false}, Nothing{0.0004, 1, 1, true},
          Nothing{0.5, 0, 1, false}, Nothing{0.5, 0x1100000, 1, false}}) {
        requests.clear();
        deliver_for(nothing.length_seconds);
        answer = nothing.answer;
        EXPECT_EQ(read(), nothing.result) << nothing.length_seconds;
        EXPECT_EQ(peaks.size(), 1u);
        EXPECT_EQ(requests.size(), nothing.requests);
    }
}

// The host counts what it delivers in 20 bits.
TEST_F(Peaks, of_more_than_the_host_can_count_are_asked_for_in_stretches) {
    deliver_for(1048.577, 2.0);
    EXPECT_TRUE(read());
    EXPECT_EQ(peaks.size(), 1048577u);
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].count, 0xFFFFF);
    EXPECT_EQ(requests[1].count, 2);
    EXPECT_EQ(requests[1].start, 2.0 + 1048.575);
}

TEST_F(Peaks, need_an_item_and_a_take) {
    EXPECT_FALSE(mk_api::mediaItem::GetMediaItemPeakList(nullptr, peaks));
    headless::Item& empty = item.track().add_item(1.0, 1.0);
    EXPECT_FALSE(MK_FELSPAR::GetMediaItemPeakList(handle(empty), peaks));
    EXPECT_TRUE(peaks.empty());
}

} // namespace
