#pragma once
// The running measurement behind measure_loudness: frames in, readings out. For use inside this folder.

#include "headless/audio/loudness.hpp"
#include "headless/audio/window_maximum.hpp"
#include "headless/base/failure.hpp"

#include <ebur128.h>

#include <cstdint>
#include <memory>
#include <span>

namespace headless {

struct EburCloser {
    void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};

class LoudnessMeter {
public:
    /// Fails for a sample rate or number of channels that loudness is not defined for.
    static Result<LoudnessMeter> create(int sample_rate, int channels, const LoudnessRequest& request);

    /// The next frames, interleaved.
    void take(std::span<const float> heard);

    /// As many frames as reach the next hop were not listened to; what was taken so far ends at a hop. Only
    /// the readings of maxima allow it.
    void skip_hop();

    /// Frames from the start to the end of hop `hop`, counted from 0.
    std::int64_t hop_end(std::int64_t hop) const;

    /// Mean weighted energy of the loudest momentary window yet, full scale being 1.
    double most_momentary_energy() const { return momentary_.most_energy(); }

    /// The readings asked for, of all that was taken.
    Loudness readings() const;

private:
    LoudnessMeter(std::unique_ptr<ebur128_state, EburCloser> state, const LoudnessRequest& request);

    void add(std::span<const float> heard);
    void note_true_peak();
    void end_hop();
    double seconds_taken() const;

    std::unique_ptr<ebur128_state, EburCloser> state_;
    LoudnessRequest request_;
    WindowMaximum momentary_;
    WindowMaximum short_term_;
    std::int64_t frames_ = 0;
    std::int64_t hops_ = 0;
    PlacedReading true_peak_; // its value is linear
};

} // namespace headless
