#include "headless/audio/resampler.hpp"

#include "headless/audio/blocks.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

namespace headless::audio {
namespace {

constexpr double window_zeros = 64.0; // of the sinc, on each side
constexpr double window_shape = 11.2; // of the Kaiser window: 110 dB
constexpr double cutoff = 0.9445;     // half of the window's transition below the new band's end
constexpr double phases_per_frame = 1024.0;
constexpr double fewest_phases = 16.0;

// The modified Bessel function of order 0.
double bessel(double x) {
    double sum = 1.0;
    double term = 1.0;
    for (int i = 1; term > sum * 1e-17; ++i) {
        term *= x * x / (4.0 * i * i);
        sum += term;
    }
    return sum;
}

double kaiser(double place) {
    return std::abs(place) < 1.0
               ? bessel(window_shape * std::sqrt(1.0 - place * place)) / bessel(window_shape)
               : 0.0;
}

double sinc(double x) {
    const double angle = std::numbers::pi * x;
    return x == 0.0 ? 1.0 : std::sin(angle) / angle;
}

float dot_product(const float* left, const float* right, std::size_t count) {
    constexpr std::size_t width = 8; // parallel sums, for vectorisation
    std::array<float, width> sums{};
    std::size_t i = 0;
    for (; i + width <= count; i += width)
        for (std::size_t lane = 0; lane < width; ++lane)
            sums[lane] += left[i + lane] * right[i + lane];
    float sum = std::accumulate(sums.begin(), sums.end(), 0.0F);
    for (; i < count; ++i)
        sum += left[i] * right[i];
    return sum;
}

std::int64_t frames_after(const AudioFormat& format, double step) {
    return format.frames == endless_frames
               ? endless_frames
               : static_cast<std::int64_t>(std::ceil(static_cast<double>(format.frames) / step));
}

} // namespace

Interpolator::Interpolator(double step)
    : cutoff_(cutoff / std::max(1.0, step)), window_frames_(window_zeros * std::max(1.0, step)),
      reach_(static_cast<std::size_t>(std::ceil(window_frames_))),
      phases_(static_cast<std::size_t>(
          std::max(fewest_phases, std::ceil(phases_per_frame / std::max(1.0, step))))),
      table_((phases_ + 1) * 2 * reach_) {
    std::vector<double> row(2 * reach_);
    for (std::size_t phase = 0; phase <= phases_; ++phase) {
        const double fraction = static_cast<double>(phase) / static_cast<double>(phases_);
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = weight_at(static_cast<double>(i) - static_cast<double>(reach_ - 1) - fraction);
        const double sum =
            std::accumulate(row.begin(), row.end(), 0.0); // 1 for a constant signal to stay as it is
        std::ranges::transform(row, table_.begin() + static_cast<std::ptrdiff_t>(phase * row.size()),
                               [&](double weight) { return static_cast<float>(weight / sum); });
    }
}

double Interpolator::weight_at(double distance) const {
    return sinc(cutoff_ * distance) * kaiser(distance / window_frames_);
}

void Interpolator::weigh(double fraction, std::span<float> weights) const {
    const double place = fraction * static_cast<double>(phases_);
    const auto phase = static_cast<std::size_t>(place);
    const auto share = static_cast<float>(place - static_cast<double>(phase));
    const float* row = table_.data() + phase * weights.size();
    const float* next = row + (share > 0.0F ? weights.size() : 0);
    for (std::size_t i = 0; i < weights.size(); ++i)
        weights[i] = row[i] + share * (next[i] - row[i]);
}

ResampledSound::ResampledSound(std::unique_ptr<Sound> inner, double step, int sample_rate)
    : Sound(inner->file(), {sample_rate, inner->format().channels, frames_after(inner->format(), step)}),
      inner_(std::move(inner)), step_(step), interpolator_(step),
      inputs_(static_cast<std::size_t>(format().channels)), weights_(2 * interpolator_.reach()) {}

Result<void> ResampledSound::read(FrameRange range, const FrameVisitor& visit) {
    const auto reach = static_cast<std::int64_t>(interpolator_.reach());
    const int channels = format().channels;
    const auto position = [&](std::int64_t frame) {
        return static_cast<std::int64_t>(std::floor(static_cast<double>(frame) * step_));
    };
    std::vector<float> block;
    const auto distribute = [&](std::span<const float> samples) -> Result<void> {
        for (std::size_t i = 0; i < samples.size(); ++i)
            inputs_[i % inputs_.size()].push_back(samples[i]);
        return {};
    };
    return for_each_block(range.first_frame, range.first_frame + range.frame_count, channels,
                          [&](std::int64_t frame, std::int64_t count) {
                              for (std::vector<float>& input : inputs_)
                                  input.clear();
                              const std::int64_t first = position(frame) - reach + 1;
                              const std::int64_t end = position(frame + count - 1) + reach + 1;
                              return inner_->read({first, end - first}, distribute).and_then([&] {
                                  block.resize(static_cast<std::size_t>(count * channels));
                                  interpolate(frame, first, block);
                                  return visit(block);
                              });
                          });
}

void ResampledSound::interpolate(std::int64_t frame, std::int64_t first_input, std::span<float> target) {
    const auto width = inputs_.size();
    for (std::size_t i = 0; i < target.size(); i += width, ++frame) {
        const double position = static_cast<double>(frame) * step_;
        const double whole = std::floor(position);
        interpolator_.weigh(position - whole, weights_);
        const auto begin = static_cast<std::size_t>(static_cast<std::int64_t>(whole) - first_input) + 1 -
                           interpolator_.reach();
        for (std::size_t channel = 0; channel < width; ++channel)
            target[i + channel] =
                dot_product(inputs_[channel].data() + begin, weights_.data(), weights_.size());
    }
}

} // namespace headless::audio
