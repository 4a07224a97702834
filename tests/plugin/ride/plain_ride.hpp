#pragma once
// The curve reckoned a second time, plainly and slowly: one peak after the other with its state in the open,
// every mean a loop. What the library does is held against this.

#include "api/media/peak_levels.hpp"

#include <cmath>
#include <optional>
#include <vector>

namespace mk_test {

using Peaks = std::vector<mk_api::mediaItem::PeakLevel>;

struct PlainWindow {
    double pos = 0.0;
    double level = 0.0;
    double point_vol = 0.0;
    std::optional<double> point_value{};
};

struct PlainScan {
    std::vector<PlainWindow> windows;
    double sum = 0.0;
    double loud_count = 0.0;
};

inline PlainScan plain_scan(const Peaks& peaks) {
    PlainScan scan;
    int fill = 0, best_index = 0;
    double best = 100.0, times[11] = {};
    for (std::size_t i = 0; i < peaks.size(); ++i) {
        fill += 1;
        const double a = std::abs(peaks[i].max_db), b = std::abs(peaks[i].min_db);
        const double level = a < b ? a : b;
        if (level < best) {
            best = level;
            best_index = fill;
        }
        times[fill] = static_cast<double>(i) * 0.001;
        if (fill < 10)
            continue;
        const int loud_index = best_index < 3 ? 3 : best_index > 7 ? 7 : best_index;
        scan.windows.push_back({.pos = times[best < 50.0 ? loud_index : 5], .level = best});
        if (best < 50.0) {
            scan.sum += best;
            scan.loud_count += 1;
        }
        fill = 0;
        best = 100.0;
    }
    if (fill >= 6 && best < 50.0) {
        scan.windows.push_back({.pos = times[5], .level = best});
        scan.sum += best;
    }
    return scan;
}

inline void plain_assign(PlainScan& scan, int ratio_type) {
    const auto mean_below = [&](double limit) {
        double sum = 0, n = 0;
        for (const PlainWindow& window : scan.windows)
            if (window.level < limit) {
                sum += window.level;
                n += 1;
            }
        return sum / n;
    };
    const double m2 = mean_below(scan.sum / scan.loud_count), m3 = mean_below(m2), m4 = mean_below(m3);
    const double f = ratio_type <= 0 ? 0.6 : ratio_type == 1 ? 0.4 : ratio_type == 2 ? 0.2 : 0.0;
    const double target = m3 + f * (m4 - m3), k = 0.115129254;
    for (PlainWindow& window : scan.windows) {
        const double level = window.level, p = window.pos;
        if (level < m3) {
            if (target - level > 0) {
                window.point_vol = -(target - level);
                window.point_value = std::exp((target - level) * -k);
            }
            continue;
        }
        window.point_value = 1.0;
        const double ceiling = (level < 29.0 && p < 0.1) || (level < 28.0 && p < 0.2) ? 4.0
                               : level < 26.0 && p >= 0.2                             ? 2.0
                                                                                      : 0.0;
        if (ceiling > 0.0 && m2 == m2) { // without a second mean: unity
            window.point_vol = level - m2 < ceiling ? level - m2 : ceiling;
            window.point_value = std::exp(window.point_vol * k);
        }
    }
}

inline std::vector<int> plain_flat(const PlainScan& scan) {
    std::vector<int> flat;
    const auto vol = [&](std::size_t i) { return scan.windows[i].point_vol; };
    for (std::size_t i = 1; i + 1 < scan.windows.size(); ++i)
        if (std::abs(vol(i) - vol(i - 1)) < 0.5 && std::abs(vol(i) - vol(i + 1)) < 0.5)
            flat.push_back(static_cast<int>(i));
    return flat;
}

} // namespace mk_test
