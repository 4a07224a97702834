#include "ride/analysis.hpp"

#include "utility/mk_utility.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace mk_api::RIDESCRIBER {

using mediaItem::peak_time;
using mediaItem::PeakLevel;

namespace {

constexpr std::size_t shortest_tail = 6;
constexpr double above_any_level = 100.0;
constexpr double quiet_threshold = 50.0;

// Places of a window's point, counted from 1: that of the loudest peak, but away from the window's edges.
constexpr std::size_t first_place = 3;
constexpr std::size_t last_place = 7;
constexpr std::size_t middle_place = 5;

struct Loudest {
    double level = above_any_level;
    std::size_t place = 0;
};

Loudest loudest(std::span<const PeakLevel> window) {
    Loudest best;
    for (std::size_t i = 0; i < window.size(); ++i) {
        const double level = std::min(std::fabs(window[i].max_db), std::fabs(window[i].min_db));
        if (level < best.level)
            best = {level, i + 1};
    }
    return best;
}

/// Returns the arithmetic mean of the levels strictly below a limit; NaN if there are none.
double mean_below(const std::vector<RideWindow>& windows, double limit) {
    double sum = 0.0;
    double count = 0.0;
    for (const RideWindow& window : windows) {
        if (window.level < limit) {
            sum += window.level;
            count += 1.0;
        }
    }
    return sum / count;
}

/// Returns how far the target lies from the third mean towards the fourth.
double target_fraction(int ratio_type) {
    switch (std::max(ratio_type, 0)) {
    case 0:
        return 0.6;
    case 1:
        return 0.4;
    case 2:
        return 0.2;
    default:
        return 0.0;
    }
}

/// Returns the largest boost that a window may get, by its position in the item; nothing if the window is too
/// quiet to be changed.
std::optional<double> boost_ceiling(const RideWindow& window) {
    if (window.level < 29.0 && window.pos < 0.1)
        return 4.0;
    if (window.level < 28.0 && window.pos < 0.2)
        return 4.0;
    if (window.level < 26.0 && window.pos >= 0.2)
        return 2.0;
    return std::nullopt;
}

void assign(RideWindow& window, const RideLadder& ladder) {
    window.point_vol = 0.0;
    if (window.level < ladder.m3) {
        const double above_target = ladder.target - window.level;
        window.point_value.reset();
        if (above_target > 0.0) {
            window.point_vol = -above_target;
            window.point_value = std::exp(above_target * -mk_utility::nepers_per_decibel);
        }
        return;
    }
    window.point_value = 1.0;
    const auto ceiling = boost_ceiling(window);
    // Without a level below the first mean there is no second mean to pull towards: unity.
    if (!ceiling || std::isnan(ladder.m2))
        return;
    window.point_vol = std::min(*ceiling, window.level - ladder.m2);
    window.point_value = mk_utility::to_reaper_volume(window.point_vol);
}

} // namespace

RideScanner::RideScanner(std::size_t expected_levels) {
    scan_.windows.reserve(expected_levels / window_.size() + 1);
}

void RideScanner::end_window() {
    const bool is_full = filled_ == window_.size();
    const Loudest best = loudest(std::span(window_).first(filled_));
    const bool is_loud = best.level < quiet_threshold;
    if (!is_full && (filled_ < shortest_tail || !is_loud))
        return;
    const std::size_t place =
        is_full && is_loud ? std::clamp(best.place, first_place, last_place) : middle_place;
    scan_.windows.push_back({.pos = peak_time(begin_ + place - 1), .level = best.level, .point_value = {}});
    if (is_loud)
        scan_.sum += best.level;
    if (is_loud && is_full)
        scan_.loud_count += 1.0;
    begin_ += filled_;
    filled_ = 0;
}

RideScan RideScanner::finish() {
    end_window();
    return std::move(scan_);
}

RideScan ScanRideWindows(std::span<const PeakLevel> peaks) {
    RideScanner scanner(peaks.size());
    for (const PeakLevel& level : peaks)
        scanner.take(level);
    return scanner.finish();
}

RideLadder ComputeRideLadder(const RideScan& scan, int ratioType) {
    RideLadder ladder{};
    ladder.m1 = scan.sum / scan.loud_count;
    ladder.m2 = mean_below(scan.windows, ladder.m1);
    ladder.m3 = mean_below(scan.windows, ladder.m2);
    ladder.m4 = mean_below(scan.windows, ladder.m3);
    ladder.target = ladder.m3 + target_fraction(ratioType) * (ladder.m4 - ladder.m3);
    return ladder;
}

void AssignPointVol(std::vector<RideWindow>& windows, const RideLadder& ladder) {
    for (RideWindow& window : windows)
        assign(window, ladder);
}

std::vector<int> CollectFlatPoints(const std::vector<RideWindow>& windows) {
    constexpr double noticeable_db = 0.5;
    const auto close = [&](std::size_t a, std::size_t b) {
        return std::fabs(windows[a].point_vol - windows[b].point_vol) < noticeable_db;
    };
    std::vector<int> flat;
    for (std::size_t i = 1; i + 1 < windows.size(); ++i)
        if (close(i, i - 1) && close(i, i + 1))
            flat.push_back(static_cast<int>(i));
    return flat;
}

} // namespace mk_api::RIDESCRIBER
