#include "ride/analysis.hpp"

#include "utility/mk_utility.hpp"

#include <algorithm>
#include <cmath>
#include <utility>

namespace mk_api::RIDESCRIBER {

using mediaItem::PeakLevel;

namespace {

constexpr std::size_t shortest_tail = 6;
constexpr double above_any_level = 100.0;
constexpr double quiet_threshold = 50.0;
constexpr double noticeable_db = 0.5;

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
        if (window.level() < limit) {
            sum += window.level();
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
    const double position = window.position_seconds();
    if (window.level() < 29.0 && position < 0.1)
        return 4.0;
    if (window.level() < 28.0 && position < 0.2)
        return 4.0;
    if (window.level() < 26.0 && position >= 0.2)
        return 2.0;
    return std::nullopt;
}

/// Returns the gain in dB; negative cuts.
double gain_db(const RideWindow& window, const RideLadder& ladder) {
    if (window.level() < ladder.m3)
        return std::min(window.level() - ladder.target, 0.0);
    const auto ceiling = boost_ceiling(window);
    // Without a level below the first mean there is no second mean to pull towards: unity.
    return ceiling && !std::isnan(ladder.m2) ? std::min(*ceiling, window.level() - ladder.m2) : 0.0;
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
    scan_.windows.emplace_back(begin_ + place - 1, best.level);
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

RidePoint AssignPointVol(const RideWindow& window, const RideLadder& ladder) {
    const double gain = gain_db(window, ladder);
    const bool is_left_alone = window.level() < ladder.m3 && gain == 0.0;
    return {gain, is_left_alone ? std::nullopt : std::optional(mk_utility::to_reaper_volume(gain))};
}

std::vector<int> CollectFlatPoints(std::span<const RideWindow> windows, const RideLadder& ladder) {
    std::vector<int> flat;
    if (windows.size() < 3)
        return flat;
    double previous = gain_db(windows[0], ladder);
    double gain = gain_db(windows[1], ladder);
    for (std::size_t i = 1; i + 1 < windows.size(); ++i) {
        const double next = gain_db(windows[i + 1], ladder);
        if (std::fabs(gain - previous) < noticeable_db && std::fabs(gain - next) < noticeable_db)
            flat.push_back(static_cast<int>(i));
        previous = std::exchange(gain, next);
    }
    return flat;
}

} // namespace mk_api::RIDESCRIBER
