// Peak records of a one-minute item: the library's list against a plain loop that fills plain structs with
// the same two roundings and the same logarithm. Both get their peaks from the same stand-in for the host.
// The label tells that both gave the same bits.

#include "api/media/peak_levels.hpp"
#include "api/media/peaks.hpp"
#include "host_api/host_functions.hpp"

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

constexpr int milliseconds = 60'000;

const std::vector<double>& host_peaks() {
    static const std::vector<double> peaks = [] {
        std::mt19937 random(1);
        std::uniform_real_distribution<double> level_db(-90.0, 0.0);
        std::vector<double> values(2 * std::size_t{milliseconds});
        for (double& value : values)
            value = std::pow(10.0, level_db(random) / 20.0);
        return values;
    }();
    return peaks;
}

int deliver(MediaItem_Take*, double, double, int, int count, int, double* buffer) {
    std::copy_n(host_peaks().begin(), 2 * count, buffer);
    return count;
}

MediaItem* item() {
    GetActiveTake = [](MediaItem* any) { return reinterpret_cast<MediaItem_Take*>(any); };
    GetMediaItemInfo_Value = [](MediaItem*, const char* key) {
        return key[2] == 'L' ? milliseconds / 1000.0 : 0.0;
    };
    GetMediaItemTake_Peaks = &deliver;
    static int any;
    return reinterpret_cast<MediaItem*>(&any);
}

struct PlainRecord {
    double time, max_peak, min_peak;
};

double plain_db(double peak) {
    double linear = std::fabs(peak);
    linear = linear < 0.0001 ? 0.0001 : std::floor(linear * 10000.0 + 0.5) / 10000.0;
    return std::floor(std::log10(linear) * 20.0 * 10000.0 + 0.5) / 10000.0;
}

std::vector<PlainRecord> plain_records() {
    std::vector<double> buffer(3 * std::size_t{milliseconds});
    deliver(nullptr, 0.0, 0.0, 1, milliseconds, 0, buffer.data());
    std::vector<PlainRecord> records;
    records.reserve(milliseconds);
    for (std::size_t i = 0; i < milliseconds; ++i)
        records.push_back(
            {static_cast<double>(i) * 0.001, plain_db(buffer[i]), plain_db(buffer[milliseconds + i])});
    return records;
}

bool equals_plain_records(const std::vector<mk_object::mk_Peak>& peaks) {
    const std::vector<PlainRecord> plain = plain_records();
    bool equal = peaks.size() == plain.size();
    for (std::size_t i = 0; equal && i < plain.size(); ++i)
        equal = peaks[i].Time->value == plain[i].time && peaks[i].MaxPeak->value == plain[i].max_peak &&
                peaks[i].MinPeak->value == plain[i].min_peak;
    return equal;
}

void plain_loop(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(plain_records().data());
    state.SetItemsProcessed(state.iterations() * milliseconds);
}
BENCHMARK(plain_loop)->Unit(benchmark::kMicrosecond);

void peak_records(benchmark::State& state) {
    MediaItem* any = item();
    std::vector<mk_object::mk_Peak> peaks;
    mk_api::mediaItem::GetMediaItemPeakList(any, peaks);
    state.SetLabel(equals_plain_records(peaks) ? "equal" : "NOT EQUAL");
    for (auto _ : state) {
        std::vector<mk_object::mk_Peak> list;
        mk_api::mediaItem::GetMediaItemPeakList(any, list);
        benchmark::DoNotOptimize(list.data());
    }
    state.SetItemsProcessed(state.iterations() * milliseconds);
}
BENCHMARK(peak_records)->Unit(benchmark::kMicrosecond);

void peak_levels(benchmark::State& state) {
    MediaItem* any = item();
    for (auto _ : state) {
        std::vector<mk_api::mediaItem::PeakLevel> levels;
        mk_api::mediaItem::read_peak_levels(any, levels);
        benchmark::DoNotOptimize(levels.data());
    }
    state.SetItemsProcessed(state.iterations() * milliseconds);
}
BENCHMARK(peak_levels)->Unit(benchmark::kMicrosecond);

} // namespace
