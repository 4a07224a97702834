#pragma once
// How much sound energy each 10 ms holds, as the ear weighs it: what momentary and short-term loudness are
// sums of. For use inside this folder. Source: ITU-R BS.1770.

#include "headless/audio/loudness.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace headless {

/// A second-order filter: y = b[0] x + b[1] x' + b[2] x" - a[0] y' - a[1] y", with the values one and two
/// frames ago.
struct FilterSection {
    std::array<double, 3> b;
    std::array<double, 2> a;
};

/// Frames in, energies of hops of 10 ms out. Hops of no whole number of frames end at the nearest frame.
class WeightedEnergy {
public:
    static constexpr int hop_milliseconds = 10;

    WeightedEnergy(int sample_rate, int channels);

    /// The next frames, interleaved.
    void take(std::span<const float> frames);

    /// Weighs what is left over; to be called after the last frames.
    void finish();

    /// The loudest of the windows that end at every `step_hops`-th hop, placed by its start; empty when no
    /// whole window fits. Negative infinity for silence.
    std::optional<PlacedReading> loudest_window(std::size_t window_hops, std::size_t step_hops) const;

private:
    void take_apart(std::span<const float> frames, std::size_t place);
    void weigh_block();
    void add_squares(std::size_t channel);
    std::size_t whole_hops() const;
    std::int64_t hop_end(std::size_t hop) const;

    int sample_rate_;
    FilterSection shelf_;
    FilterSection high_pass_;
    std::size_t history_frames_;
    std::size_t block_frames_;
    std::vector<std::vector<float>> samples_; // per channel: the history, then the block
    std::vector<float> squares_;              // of one channel's weighted block
    std::size_t filled_frames_ = 0;           // of the block
    std::int64_t weighed_frames_ = 0;         // before the block
    std::vector<double> hop_energies_;        // sums of squares; the last hop need not be whole
};

} // namespace headless
