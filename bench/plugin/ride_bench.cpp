// The ride's decisions for a one-minute item: windows, means, gains, points to leave out.

#include "ride/analysis.hpp"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

using namespace mk_api::RIDESCRIBER;

void ride_analysis(benchmark::State& state) {
    constexpr std::size_t milliseconds = 60'000;
    std::mt19937 random(1);
    std::uniform_real_distribution<double> level_db(-60.0, 0.0);
    std::vector<mk_api::mediaItem::PeakLevel> peaks(milliseconds);
    for (auto& peak : peaks)
        peak = {level_db(random), level_db(random)};
    for (auto _ : state) {
        const RideScan scan = ScanRideWindows(peaks);
        const RideLadder ladder = ComputeRideLadder(scan, 0);
        for (const RideWindow& window : scan.windows)
            benchmark::DoNotOptimize(AssignPointVol(window, ladder));
        benchmark::DoNotOptimize(CollectFlatPoints(scan.windows, ladder).data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(milliseconds));
}
BENCHMARK(ride_analysis)->Unit(benchmark::kMicrosecond);

} // namespace
