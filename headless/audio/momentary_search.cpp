#include "headless/audio/momentary_search.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>

namespace headless::audio {
namespace {

constexpr std::size_t hops_of_a_stretch = (momentary_window_milliseconds + weighting_memory_milliseconds) /
                                              LoudnessRequest::momentary_only().hop_milliseconds +
                                          1;
constexpr double margin = 1.001; // for float sums, and the library's rounded shelf coefficients

// The weighting of ITU-R BS.1770 is a shelf of 4 dB at 1682 Hz and a high pass at 38 Hz. Let k be the square
// of tan(pi 1682 / rate) and u = tan^2(w / 2) / k. The shelf's energy gain is (1 + S u^2) / (1 + u^2), where
// S is 4 dB. The energy gain of a difference of neighbouring samples is 4 sin^2(w / 2), and the shelf's gain
// is nowhere more than 1 + slope times that, for the slope returned here.
float shelf_slope(int sample_rate) {
    const double k = std::pow(std::tan(std::numbers::pi * 1682.0 / sample_rate), 2);
    return static_cast<float>((std::pow(10.0, 0.4) - 1.0) / (8.0 * k) * (k + std::hypot(1.0, k)));
}

// The library makes a window of tenths of a second in whole frames.
int window_frames(int sample_rate) { return sample_rate / 10 * (momentary_window_milliseconds / 100); }

// The gain of the high pass, which the library does not normalise, and the weight of surround channels.
double other_gain(int sample_rate, int channels) {
    const double k = std::tan(std::numbers::pi * 38.2 / sample_rate);
    const double high_pass = 1.0 + 2.0 * k + k * k;
    return high_pass * high_pass * (channels > 3 ? 1.41 : 1.0);
}

// The bound for a step from one sample to a later one: the square of the later one plus `slope` times the
// square of the step.
float bounding_energy(float from, float to, float slope) {
    const float step = to - from;
    return to * to + slope * step * step;
}

// The sum of the bounds of all samples after the first frame, each with the previous sample of its channel.
double bounding_energy(std::span<const float> samples, std::size_t channels, float slope) {
    constexpr std::size_t width = 8; // parallel sums, for vectorisation
    std::array<float, width> sums{};
    const float* from = samples.data();
    const float* to = from + channels;
    const std::size_t count = samples.size() - channels;
    const std::size_t whole = count - count % width;
    for (std::size_t i = 0; i < whole; i += width)
        for (std::size_t lane = 0; lane < width; ++lane)
            sums[lane] += bounding_energy(from[i + lane], to[i + lane], slope);
    double sum = std::accumulate(sums.begin(), sums.end(), 0.0);
    for (std::size_t i = whole; i < count; ++i)
        sum += bounding_energy(from[i], to[i], slope);
    return sum;
}

double square_sum(std::span<const float> samples) {
    return std::inner_product(samples.begin(), samples.end(), samples.begin(), 0.0);
}

} // namespace

Result<MomentarySearch> MomentarySearch::create(int sample_rate, int channels) {
    return LoudnessMeter::create(sample_rate, channels, LoudnessRequest::momentary_only())
        .map([&](LoudnessMeter&& meter) { return MomentarySearch(std::move(meter), sample_rate, channels); });
}

MomentarySearch::MomentarySearch(LoudnessMeter meter, int sample_rate, int channels)
    : meter_(std::move(meter)), channels_(static_cast<std::size_t>(channels)),
      slope_(shelf_slope(sample_rate)),
      gain_(other_gain(sample_rate, channels) * margin / window_frames(sample_rate)),
      hop_bounds_(hops_of_a_stretch), buffer_(channels_) {}

std::size_t MomentarySearch::samples_before(std::int64_t hop) const {
    return hop == 0 ? 0 : static_cast<std::size_t>(meter_.hop_end(hop - 1)) * channels_;
}

void MomentarySearch::process(std::span<const float> samples) {
    while (!samples.empty()) {
        const std::size_t up_to_border = samples_before(hops_ + 1) - samples_before(first_pending_);
        const auto piece = samples.first(std::min(samples.size(), up_to_border - pending().size()));
        buffer_.insert(buffer_.end(), piece.begin(), piece.end());
        samples = samples.subspan(piece.size());
        if (pending().size() == up_to_border)
            end_hop();
    }
}

void MomentarySearch::end_hop() {
    const std::size_t hop_size = samples_before(hops_ + 1) - samples_before(hops_);
    const auto samples = std::span(buffer_).last(hop_size + channels_);
    // The audio may be cut before or after this hop, which adds a difference to silence at the cut.
    const double cuts =
        (1.0 + slope_) * square_sum(samples.first(channels_)) + slope_ * square_sum(samples.last(channels_));
    hop_bounds_[static_cast<std::size_t>(hops_) % hop_bounds_.size()] =
        bounding_energy(samples, channels_, slope_) + cuts;
    ++hops_;
    if (may_be_loudest())
        measure_pending();
    else if (hops_ - first_pending_ == std::ssize(hop_bounds_))
        skip_first_pending();
}

bool MomentarySearch::may_be_loudest() const {
    return std::accumulate(hop_bounds_.begin(), hop_bounds_.end(), 0.0) * gain_ >=
           meter_.max_momentary_energy();
}

void MomentarySearch::measure_pending() {
    meter_.process(pending());
    first_pending_ = hops_;
    forget_before(buffer_.size());
}

void MomentarySearch::skip_first_pending() {
    meter_.skip_hop();
    pending_begin_ += samples_before(first_pending_ + 1) - samples_before(first_pending_);
    ++first_pending_;
    if (pending_begin_ > buffer_.size() / 2)
        forget_before(pending_begin_);
}

void MomentarySearch::forget_before(std::size_t end) {
    buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(end - channels_));
    pending_begin_ = channels_;
}

} // namespace headless::audio
