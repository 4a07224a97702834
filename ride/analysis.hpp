#pragma once
// The ride curve: which gain each 10 ms window of an item gets, and which points of the curve can be left
// out. Needs no host and no envelope.
//
// A level here is a positive number of dB below full scale: a smaller level is louder, and 6.0 means -6 dB.
// Windows louder than a target are pulled down to it, windows of middling level are pulled towards the second
// of four nested means with a limited boost, quiet windows are left alone. Each window is judged by itself.

#include "api/media/peak_levels.hpp"

#include <optional>
#include <span>
#include <vector>

namespace mk_api::RIDESCRIBER {

/// One window and the envelope point that stands for it.
struct RideWindow {
    double pos;                        ///< seconds from the item's start
    double level;                      ///< of the window's loudest peak
    double point_vol = 0.0;            ///< the gain in dB; negative cuts
    std::optional<double> point_value; ///< the linear gain to write; none leaves the point as it is
};

struct RideScan {
    std::vector<RideWindow> windows;
    double sum = 0.0;        ///< of the levels of the loud windows and of the tail window
    double loud_count = 0.0; ///< full windows louder than the quiet threshold
};

/// The means of ever louder subsets of the windows, and the target. A mean without members is not a number.
struct RideLadder {
    double m1;
    double m2;
    double m3;
    double m4;
    double target;
};

/// Cuts the levels, one a millisecond, into windows of ten. A last window of more than five counts if it is
/// loud.
RideScan ScanRideWindows(std::span<const mediaItem::PeakLevel> peaks);

/// @param ratioType  how deep the target lies between the two loudest means: 0 and below cuts lightest, 3 and
/// above
///                   hardest
RideLadder ComputeRideLadder(const RideScan& scan, int ratioType);

/// Decides each window's `point_vol` and `point_value`.
void AssignPointVol(std::vector<RideWindow>& windows, const RideLadder& ladder);

/// Ascending indices of the windows whose gain differs from both neighbours' by less than half a dB.
std::vector<int> CollectFlatPoints(const std::vector<RideWindow>& windows);

} // namespace mk_api::RIDESCRIBER
