// The ride's decisions for a one-minute item: windows, means, gains, points to leave out.

#include "ride/analysis.hpp"

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

namespace {

void ride_analysis(benchmark::State& state) {
    constexpr std::size_t milliseconds = 60'000;
    std::mt19937 random(1);
    std::uniform_real_distribution<double> level_db(-60.0, 0.0);
    std::vector<mk_api::mediaItem::PeakLevel> peaks(milliseconds);
    for (auto& peak : peaks)
        peak = {level_db(random), level_db(random)};
    for (auto _ : state) {
        auto scan = mk_api::RIDESCRIBER::ScanRideWindows(peaks);
        AssignPointVol(scan.windows, ComputeRideLadder(scan, 0));
        benchmark::DoNotOptimize(CollectFlatPoints(scan.windows).data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(milliseconds));
}
BENCHMARK(ride_analysis)->Unit(benchmark::kMicrosecond);

} // namespace
