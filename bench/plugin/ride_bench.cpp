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
        const RideCurve curve(scan_ride_windows(peaks), 0);
        std::size_t flat_count = 0;
        for (std::size_t i = 0; i < curve.windows().size(); ++i) {
            benchmark::DoNotOptimize(curve.point_value(curve.windows()[i]));
            flat_count += curve.is_flat(i);
        }
        benchmark::DoNotOptimize(flat_count);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(milliseconds));
}
BENCHMARK(ride_analysis)->Unit(benchmark::kMicrosecond);

} // namespace
