#pragma once
// The ride curve: the gain for each 10 ms window of an item, and the points of the curve that can be left
// out. Needs no host and no envelope.
// A level here is a positive number of dB below full scale: a smaller level is louder, and 6.0 means -6 dB.
// Windows louder than a target are pulled down to it. Windows of middling level are pulled towards the second
// of four nested means with a limited boost. Quiet windows are left alone. Each window is judged by itself.

#include "api/media/peak_levels.hpp"

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace mk_api::RIDESCRIBER {

/// One window and its envelope point.
struct RideWindow {
    double pos;                        ///< seconds from the item's start
    double level;                      ///< of the window's loudest peak
    double point_vol = 0.0;            ///< the gain in dB; negative cuts
    std::optional<double> point_value; ///< the linear gain to write; if empty, the point stays as it is
};

struct RideScan {
    std::vector<RideWindow> windows;
    double sum = 0.0;        ///< of the levels of the loud windows and the tail window
    double loud_count = 0.0; ///< full windows louder than the quiet threshold
};

/// The means of successively louder subsets of the windows, and the target. The mean of an empty subset is
/// NaN.
struct RideLadder {
    double m1;
    double m2;
    double m3;
    double m4;
    double target;
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

/// Computes the means and the target.
/// @param ratioType  how far the target lies between the two loudest means: 0 and below cuts lightest, 3 and
/// above hardest
RideLadder ComputeRideLadder(const RideScan& scan, int ratioType);

/// Decides each window's `point_vol` and `point_value`.
void AssignPointVol(std::vector<RideWindow>& windows, const RideLadder& ladder);

/// Returns the indices, in ascending order, of the windows whose gain differs from that of both neighbours by
/// less than 0.5 dB.
std::vector<int> CollectFlatPoints(const std::vector<RideWindow>& windows);

} // namespace mk_api::RIDESCRIBER
