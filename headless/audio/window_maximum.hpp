#pragma once
// Finds the loudest of the windows of one length that end at the hops of a measurement. For use inside this
// folder.

#include "headless/audio/loudness.hpp"

#include <ebur128.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace headless::audio {

/// After this time the weighting filter's response to earlier audio has fallen by some 180 dB: its slowest
/// part is a double pole at 38 Hz.
inline constexpr int weighting_memory_milliseconds = 100;

/// Gives the same result as asking the library for the window at every hop.
///
/// The library reads a window by summing all of its frames, which takes longer at every hop than the
/// filtering. So only the energy of each hop is read, and the sum over the hops of a window gives its
/// loudness: exactly if hops are whole numbers of frames, otherwise as an upper bound, and the library is
/// asked unless the bound is below the maximum so far.
class WindowMaximum {
public:
    using Ask = int (*)(ebur128_state*, double*);

    WindowMaximum(int window_milliseconds, int hop_milliseconds, unsigned long sample_rate, Ask ask);

    /// To be called when `state` has just been given the last frames of a hop.
    void end_hop(ebur128_state* state);

    /// To be called for a hop of which `state` was given nothing. Windows count again once the weighting
    /// filter's memory of the gap has decayed.
    void skip_hop();

    /// Mean energy of the loudest window; 0 before the first.
    double max_energy() const { return max_energy_.value_or(0.0); }

    /// Empty if no complete window fitted.
    std::optional<PlacedReading> reading() const;

private:
    bool hops_are_long() const { return hop_milliseconds_ >= longest_summed_hop_milliseconds; }
    double summed_energy() const;
    double asked_energy(ebur128_state* state) const;
    void read_hop(ebur128_state* state);

    static constexpr int longest_summed_hop_milliseconds = 100;

    int window_milliseconds_;
    int hop_milliseconds_;
    Ask ask_;
    bool sums_are_exact_;
    unsigned long read_milliseconds_;  // of a hop: no less than it
    double read_share_;                // of the window's frames
    std::vector<double> hop_energies_; // ring buffer: each hop's part of a window's mean energy
    std::int64_t hops_ = 0;
    std::int64_t usable_hops_ = 0; // since the last gap; negative while the filter's memory still holds one
    std::int64_t loudest_hop_ = 0;
    std::optional<double> max_energy_;
};

} // namespace headless::audio
