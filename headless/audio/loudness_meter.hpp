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

    /// The readings asked for, of all that was taken.
    Loudness readings() const;

private:
    LoudnessMeter(std::unique_ptr<ebur128_state, EburCloser> state, const LoudnessRequest& request);

    std::int64_t border_after(std::int64_t hop) const;
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
