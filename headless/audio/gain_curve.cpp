#include "headless/audio/gain_curve.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <type_traits>

namespace headless::audio {
namespace {

/// The position of the frames of a block in the envelope.
struct BlockTimes {
    double start_seconds;
    std::int64_t first_frame;
    double sample_rate;
    std::size_t size;

    double seconds(std::size_t index) const {
        return start_seconds +
               static_cast<double>(first_frame + static_cast<std::int64_t>(index)) / sample_rate;
    }

    // The first frame at or after the position, not before `from`; `size` if there is none. The estimate is
    // off by at most one frame, due to rounding.
    std::size_t frame_at(double position_seconds, std::size_t from) const {
        const double estimate =
            std::ceil((position_seconds - start_seconds) * sample_rate - static_cast<double>(first_frame));
        auto index = static_cast<std::size_t>(
            std::clamp(estimate, static_cast<double>(from), static_cast<double>(size)));
        while (index > from && seconds(index - 1) >= position_seconds)
            --index;
        while (index < size && seconds(index) < position_seconds)
            ++index;
        return index;
    }
};

// The line from one point to the next, starting at frame `begin`.
void fill_line(std::span<double> gains, const project::EnvelopePoint& from, const project::EnvelopePoint& to,
               const BlockTimes& times, std::size_t begin) {
    const double slope = (to.value - from.value) / (to.position_seconds - from.position_seconds);
    const double first = from.value + slope * (times.seconds(begin) - from.position_seconds);
    const double step = slope / times.sample_rate;
    const int count = static_cast<int>(gains.size());
    for (int i = 0; i < count; ++i)
        gains[static_cast<std::size_t>(i)] = first + step * i;
}

void fill_stretch(std::span<double> gains, const project::EnvelopePoint& from,
                  const project::EnvelopePoint& to, const BlockTimes& times, std::size_t begin) {
    if (from.shape == project::PointShape::linear) {
        fill_line(gains, from, to, times, begin);
        return;
    }
    for (std::size_t i = 0; i < gains.size(); ++i)
        gains[i] = project::value_between(from, to, times.seconds(begin + i));
}

// The values of the curve through `points`, which must not be empty.
void fill_values(std::span<double> gains, std::span<const project::EnvelopePoint> points,
                 const BlockTimes& times) {
    auto next =
        std::ranges::upper_bound(points, times.seconds(0), {}, &project::EnvelopePoint::position_seconds);
    std::size_t begin = 0;
    for (; next != points.end() && begin < gains.size(); ++next) {
        const std::size_t end = times.frame_at(next->position_seconds, begin);
        const auto stretch = gains.subspan(begin, end - begin);
        if (next == points.begin())
            std::ranges::fill(stretch, next->value);
        else
            fill_stretch(stretch, next[-1], *next, times, begin);
        begin = end;
    }
    std::ranges::fill(gains.subspan(begin), points.back().value);
}

// `width` is a constant for the usual channel counts, which lets the compiler process several frames at once.
template <class Width>
void scale(std::span<const double> gains, Width width, const float* in, float* out) {
    for (std::size_t frame = 0; frame < gains.size(); ++frame) {
        for (std::size_t channel = 0; channel < width; ++channel) {
            const std::size_t i = frame * width + channel;
            out[i] = static_cast<float>(static_cast<double>(in[i]) * gains[frame]);
        }
    }
}

void scale_channels(std::span<const double> gains, std::size_t channels, const float* in, float* out) {
    switch (channels) {
    case 1:
        return scale(gains, std::integral_constant<std::size_t, 1>{}, in, out);
    case 2:
        return scale(gains, std::integral_constant<std::size_t, 2>{}, in, out);
    default:
        return scale(gains, channels, in, out);
    }
}

} // namespace

GainCurve::GainCurve(const project::Envelope& envelope, double start_seconds, double factor, double speed)
    : points_(envelope.points().begin(), envelope.points().end()), start_seconds_(start_seconds / speed),
      factor_(factor) {
    if (speed != 1.0)
        for (project::EnvelopePoint& point : points_)
            point.position_seconds /= speed;
}

double Fade::gain_at(double seconds) const {
    const double passed = std::clamp((seconds - start_seconds) / length_seconds, 0.0, 1.0);
    const double t = is_fall ? 1.0 - passed : passed;
    switch (shape) {
    case Shape::fast_quadratic:
        return 1.0 - (1.0 - t) * (1.0 - t);
    case Shape::slow_quadratic:
        return t * t;
    case Shape::fast_quartic:
        return 1.0 - std::pow(1.0 - t, 4);
    case Shape::slow_quartic:
        return std::pow(t, 4);
    case Shape::cosine_s:
        return 0.5 - 0.5 * std::cos(std::numbers::pi * t);
    case Shape::quartic_s:
        return t < 0.5 ? 8.0 * std::pow(t, 4) : 1.0 - 8.0 * std::pow(1.0 - t, 4);
    default:
        return t;
    }
}

void GainCurve::evaluate(std::int64_t first_frame, int sample_rate, std::span<double> gains) const {
    evaluate_envelope(first_frame, sample_rate, gains);
    for (const Fade& fade : fades_)
        for (std::size_t i = 0; i < gains.size(); ++i)
            gains[i] *=
                fade.gain_at(static_cast<double>(first_frame + static_cast<std::int64_t>(i)) / sample_rate);
}

void GainCurve::evaluate_envelope(std::int64_t first_frame, int sample_rate, std::span<double> gains) const {
    if (points_.empty()) {
        std::ranges::fill(gains, factor_);
        return;
    }
    fill_values(gains, points_,
                {start_seconds_, first_frame, static_cast<double>(sample_rate), gains.size()});
    if (factor_ != 1.0)
        for (double& gain : gains)
            gain *= factor_;
}

void GainCurve::apply(std::int64_t first_frame, int sample_rate, int channels, std::span<const float> source,
                      std::span<float> target) const {
    std::array<double, 1024> gains;
    const auto width = static_cast<std::size_t>(channels);
    const std::size_t frames = source.size() / width;
    for (std::size_t done = 0; done < frames; done += gains.size()) {
        const auto count = std::min(frames - done, gains.size());
        evaluate(first_frame + static_cast<std::int64_t>(done), sample_rate, std::span(gains).first(count));
        scale_channels(std::span(gains).first(count), width, source.data() + done * width,
                       target.data() + done * width);
    }
}

} // namespace headless::audio
