// The levels of an item, as made from the host's peaks, and the ride's gains.

#include "api/media/peak_levels.hpp"
#include "host_api/host_functions.hpp"
#include "ride/analysis.hpp"
#include "tests/platforms/pure_results/results.hpp"

#include <cmath>
#include <cstring>

namespace pure_results {
namespace {

using mk_api::mediaItem::PeakLevel;
using namespace mk_api::RIDESCRIBER;

// What the host tells of its only item.
double length_seconds;
unsigned item_seed;

/// Peaks of speech: bursts and pauses, with what is special in between.
int deliver_peaks(MediaItem_Take*, double, double, int, int count, int, double* peaks) {
    static const double special[] = {0.0, 0.0001, 0.00005, 0.99999, 1.0, 1.63835, 1.6384, 4.0, -0.25, 1e-300};
    Numbers numbers(item_seed);
    double loudness = 0.5;
    for (int i = 0; i < count; ++i) {
        if (i % 37 == 0)
            loudness = numbers.below(4) == 0 ? 0.0002 : numbers.between(0.01, 0.9);
        peaks[i] = numbers.below(50) == 0 ? special[numbers.below(std::size(special))]
                                          : loudness * numbers.between(0.3, 1.0);
        peaks[count + i] = -peaks[i] * numbers.between(0.5, 1.2);
    }
    return count;
}

void bind_host() {
    static char take;
    GetActiveTake = +[](MediaItem*) { return reinterpret_cast<MediaItem_Take*>(&take); };
    GetMediaItemInfo_Value =
        +[](MediaItem*, const char* key) { return std::strcmp(key, "D_LENGTH") == 0 ? length_seconds : 0.0; };
    GetMediaItemTake_Peaks = &deliver_peaks;
}

void add_ride(Results& results, const std::vector<PeakLevel>& levels) {
    const RideScan scan = ScanRideWindows(levels);
    results.add("ride of " + std::to_string(levels.size()) + " ms: " + std::to_string(scan.windows.size()) +
                " windows, sum " + shown(scan.sum) + ", loud " + shown(scan.loud_count));
    for (const int ratio : {0, 1, 2, 3}) {
        const RideLadder ladder = ComputeRideLadder(scan, ratio);
        results.add("means " + shown(ladder.m1) + " " + shown(ladder.m2) + " " + shown(ladder.m3) + " " +
                    shown(ladder.m4) + ", target " + shown(ladder.target));
        for (const RideWindow& window : scan.windows) {
            const RidePoint point = AssignPointVol(window, ladder);
            results.sweep(shown(window.position_seconds()) + " " + shown(window.level()) + " " +
                          shown(point.point_vol) + " " +
                          (point.value ? shown_rounded(*point.value) : "none"));
        }
        for (const int flat : CollectFlatPoints(scan.windows, ladder))
            results.sweep(std::to_string(flat));
        results.end_sweep("points and flat points");
    }
}

} // namespace

void add_levels_and_gains(Results& results) {
    bind_host();
    char item = 0;
    for (const double length : {0.0004, 0.0155, 1.0, 12.3456, 60.0}) {
        length_seconds = length;
        item_seed = static_cast<unsigned>(length * 1000.0);
        std::vector<PeakLevel> levels;
        const bool has_levels =
            mk_api::mediaItem::read_peak_levels(reinterpret_cast<MediaItem*>(&item), levels);
        for (const PeakLevel& level : levels)
            results.sweep(shown(level.max_db) + " " + shown(level.min_db));
        results.end_sweep("levels of " + shown(length) + " s, " + std::to_string(has_levels));
        add_ride(results, levels);
    }
}

} // namespace pure_results
