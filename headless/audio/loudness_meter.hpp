#pragma once
// The running measurement behind measure_loudness: frames in, readings out. For use inside this folder.

#include "headless/audio/loudness.hpp"
#include "headless/audio/weighted_energy.hpp"
#include "headless/base/failure.hpp"

#include <ebur128.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

namespace headless {

struct EburCloser {
    void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};

/// The two maxima are sums of weighted energies of our own: the library can only be asked for one window
/// after the other, which at every 10 ms costs far more than the filtering. All else is the library's.
class LoudnessMeter {
public:
    /// Fails for a sample rate or number of channels that loudness is not defined for.
    static Result<LoudnessMeter> create(int sample_rate, int channels, const LoudnessRequest& request);

    /// The next frames, interleaved.
    void take(std::span<const float> heard);

    /// The readings asked for, of all that was taken. To be called once.
    Loudness finish();

private:
    using Library = std::unique_ptr<ebur128_state, EburCloser>;

    LoudnessMeter(int sample_rate, int channels, const LoudnessRequest& request, Library library);

    void add_to_library(std::span<const float> heard);
    void note_true_peak();
    double seconds_taken() const { return static_cast<double>(frames_) / sample_rate_; }

    int sample_rate_;
    std::size_t channels_;
    LoudnessRequest request_;
    Library library_; // null when nothing is asked of it
    std::optional<WeightedEnergy> energy_;
    std::int64_t frames_ = 0;
    PlacedReading true_peak_; // its value is linear
};

} // namespace headless
