#pragma once
// A sound at another speed, or the same sound at another sample rate.

#include "headless/audio/sound.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace headless::audio {

/// Weights by which the frames around a position give the value there: a sinc with a Kaiser window. What
/// would alias at that speed is suppressed by 110 dB, and up to 89 % of the new band is kept to 0.001 dB.
class Interpolator {
public:
    /// @param step frames from one position to the next, which decides the band
    explicit Interpolator(double step);

    /// The number of frames that count on each side of a position.
    std::size_t reach() const { return reach_; }

    /// Sets the weights of the 2 * reach() frames around a position, the first of which lies reach() - 1
    /// frames before the position's own frame.
    /// @param fraction of the position, at least 0 and below 1
    void weigh(double fraction, std::span<float> weights) const;

private:
    double weight_at(double distance) const;

    double cutoff_; // 1 is half the sample rate
    double window_frames_;
    std::size_t reach_;
    std::size_t phases_;
    std::vector<float> table_; // a row of weights for each phase, and one for a fraction of 1
};

/// Frame i is what the inner sound has at frame i * step. Samples do not depend on where a read starts.
class ResampledSound final : public Sound {
public:
    /// Steps outside these limits cannot be played.
    static constexpr double smallest_step = 1.0 / 256.0;
    static constexpr double largest_step = 256.0;

    /// @param sample_rate of this sound
    ResampledSound(std::unique_ptr<Sound> inner, double step, int sample_rate);
    Result<void> read(FrameRange range, const FrameVisitor& visit) override;

private:
    void interpolate(std::int64_t frame, std::int64_t first_input, std::span<float> target);

    std::unique_ptr<Sound> inner_;
    double step_;
    Interpolator interpolator_;
    std::vector<std::vector<float>> inputs_; // a channel each
    std::vector<float> weights_;
};

} // namespace headless::audio
