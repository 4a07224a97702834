#pragma once
// The gain over time that is applied to a take: a constant factor, times an envelope if there is one.

#include "headless/project/envelope.hpp"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace headless::audio {

/// A rise from 0 to 1 over a stretch of time, or a fall from 1 to 0.
struct Fade {
    /// In the workstation's numbering. Fast and slow tell how a rise starts; a fall is its mirror image.
    enum class Shape {
        linear,
        fast_quadratic,
        slow_quadratic,
        fast_quartic,
        slow_quartic,
        cosine_s,
        quartic_s
    };

    double start_seconds = 0.0;
    double length_seconds = 0.0;
    Shape shape = Shape::linear;
    bool is_fall = false;

    double gain_at(double seconds) const;
    bool operator==(const Fade&) const = default;
};

/// A linear gain for every frame of a range. Frame 0 is the range's first frame.
class GainCurve {
public:
    /// The same gain throughout.
    explicit GainCurve(double factor = 1.0) : factor_(factor) {}

    /// `factor` times the envelope, whether or not the envelope is active. Keeps a copy of the points.
    /// @param start_seconds position in the envelope at which frame 0 lies
    /// @param speed         seconds of the envelope in a second of audio, above 0
    GainCurve(const project::Envelope& envelope, double start_seconds, double factor = 1.0,
              double speed = 1.0);

    /// Multiplies the gains by the fade, whose times count from frame 0.
    void add(const Fade& fade) { fades_.push_back(fade); }

    /// Writes the gains of frames `first_frame`, `first_frame + 1`, ... into `gains`, one per frame. Blocks
    /// may start anywhere: each costs one search among the points.
    void evaluate(std::int64_t first_frame, int sample_rate, std::span<double> gains) const;

    /// target = source times gain, rounded once to float. Interleaved samples of whole frames. The spans have
    /// the same size and may be the same memory.
    void apply(std::int64_t first_frame, int sample_rate, int channels, std::span<const float> source,
               std::span<float> target) const;

    /// The gain if it is constant; empty with an envelope or fades.
    std::optional<double> constant() const {
        return points_.empty() && fades_.empty() ? std::optional(factor_) : std::nullopt;
    }

    /// True if every gain is 1.
    bool is_unity() const { return constant() == 1.0; }

private:
    void evaluate_envelope(std::int64_t first_frame, int sample_rate, std::span<double> gains) const;

    std::vector<project::EnvelopePoint> points_; // empty: the factor alone
    double start_seconds_ = 0.0;
    double factor_ = 1.0;
    std::vector<Fade> fades_;
};

} // namespace headless::audio
