#pragma once
// The ride curve: the gain for each 10 ms window of an item, and the points of the curve that can be left
// out. Needs no host and no envelope.
// A level here is a positive number of dB below full scale: a smaller level is louder, and 6.0 means -6 dB.
// Windows louder than a target are pulled down to it. Windows of middling level are pulled towards the second
// of four nested means with a limited boost. Quiet windows are left alone. Each window is judged by itself.

#include "api/media/peak_levels.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace mk_api::RIDESCRIBER {

/// One window. A recording of a day has millions of them, so each takes no more than 8 bytes.
class RideWindow {
public:
    /// @param millisecond  of the window's envelope point, from the item's start
    /// @param level        of the window's loudest peak, 0 to 100 with four decimals
    RideWindow(std::size_t millisecond, double level)
        : millisecond_(static_cast<std::uint32_t>(millisecond)),
          level_steps_(static_cast<std::uint32_t>(std::lround(level * steps_per_decibel))) {}

    double position_seconds() const { return mediaItem::peak_time(millisecond_); }

    /// The same number as was given.
    double level() const { return level_steps_ / steps_per_decibel; }

private:
    static constexpr double steps_per_decibel = 10000.0;

    std::uint32_t millisecond_;
    std::uint32_t level_steps_;
};

struct RideScan {
    std::vector<RideWindow> windows;
    double sum = 0.0;        ///< of the levels of the loud windows and the tail window
    double loud_count = 0.0; ///< full windows louder than the quiet threshold
};

/// Divides incoming levels, one per millisecond, into windows of ten, so that the levels of a whole day need
/// not be kept. A last window of more than five levels counts if it is loud.
class RideScanner {
public:
    /// @param expected_levels  the approximate number of levels to come
    explicit RideScanner(std::size_t expected_levels);

    void take(const mediaItem::PeakLevel& level) {
        window_[filled_++] = level;
        if (filled_ == window_.size())
            end_window();
    }

    /// Ends the scan and returns its result.
    RideScan finish();

private:
    void end_window();

    RideScan scan_;
    std::array<mediaItem::PeakLevel, 10> window_{}; // milliseconds
    std::size_t filled_ = 0;
    std::size_t begin_ = 0; // index of the window's first level
};

/// The same for levels that are already in memory.
RideScan ScanRideWindows(std::span<const mediaItem::PeakLevel> peaks);

/// The means of successively louder subsets of the windows, and the target. The mean of an empty subset is
/// NaN.
struct RideLadder {
    double m1;
    double m2;
    double m3;
    double m4;
    double target;
};

/// Computes the means and the target.
/// @param ratioType  how far the target lies between the two loudest means: 0 and below cuts lightest, 3 and
/// above hardest
RideLadder ComputeRideLadder(const RideScan& scan, int ratioType);

/// What is decided for a window's envelope point.
struct RidePoint {
    double point_vol;            ///< the gain in dB; negative cuts
    std::optional<double> value; ///< the linear gain to write; nothing if the point stays as it is
};

/// Decides the gain of a window. It depends on nothing but the window and the means.
RidePoint AssignPointVol(const RideWindow& window, const RideLadder& ladder);

/// Returns the indices, in ascending order, of the windows whose gain differs from that of both neighbours by
/// less than 0.5 dB. The first and the last window are never among them.
std::vector<int> CollectFlatPoints(std::span<const RideWindow> windows, const RideLadder& ladder);

} // namespace mk_api::RIDESCRIBER
