#pragma once
// The running measurement behind measure_loudness: takes frames, returns readings. For use inside this
// folder.

#include "headless/audio/loudness.hpp"
#include "headless/audio/window_maximum.hpp"
#include "headless/base/failure.hpp"

#include <ebur128.h>

#include <cstdint>
#include <memory>
#include <span>

namespace headless::audio {

struct EburCloser {
    void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};

class LoudnessMeter {
public:
    /// Fails if loudness is not defined for the sample rate or number of channels.
    static Result<LoudnessMeter> create(int sample_rate, int channels, const LoudnessRequest& request);

    /// Processes the next frames, interleaved.
    void process(std::span<const float> samples);

    /// Skips the frames up to the next hop. The frames processed so far must end at a hop. Only the readings
    /// of maxima allow skipping.
    void skip_hop();

    /// Number of frames from the start to the end of hop `hop`, counted from 0.
    std::int64_t hop_end(std::int64_t hop) const;

    /// Mean weighted energy of the loudest momentary window so far; full scale is 1.
    double max_momentary_energy() const { return momentary_.max_energy(); }

    /// The requested readings, of all frames processed.
    Loudness readings() const;

private:
    LoudnessMeter(std::unique_ptr<ebur128_state, EburCloser> state, const LoudnessRequest& request);

    void add(std::span<const float> samples);
    void note_true_peak();
    void end_hop();
    double seconds_processed() const;

    std::unique_ptr<ebur128_state, EburCloser> state_;
    LoudnessRequest request_;
    WindowMaximum momentary_;
    WindowMaximum short_term_;
    std::int64_t frames_ = 0;
    std::int64_t hops_ = 0;
    PlacedReading true_peak_; // its value is linear
};

} // namespace headless::audio
