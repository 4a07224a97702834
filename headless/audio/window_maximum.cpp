#include "headless/audio/window_maximum.hpp"

#include <cmath>
#include <functional>
#include <numeric>

namespace headless::audio {
namespace {

constexpr double weighting_offset_lu = 0.691; // ITU-R BS.1770: LUFS = 10 log10(energy) - 0.691
constexpr double rounding_margin = 1.0 + 1e-9;

double energy_of(double lufs) { return std::pow(10.0, (lufs + weighting_offset_lu) / 10.0); }
double lufs_of(double energy) { return 10.0 * std::log10(energy) - weighting_offset_lu; }

} // namespace

WindowMaximum::WindowMaximum(int window_milliseconds, int hop_milliseconds, unsigned long sample_rate,
                             Ask ask)
    : window_milliseconds_(window_milliseconds), hop_milliseconds_(hop_milliseconds), ask_(ask) {
    const auto hop = static_cast<unsigned long>(hop_milliseconds);
    const auto window = static_cast<unsigned long>(window_milliseconds);
    const bool hops_are_whole = hop * sample_rate % 1000 == 0;
    sums_are_exact_ = !hops_are_long() && hops_are_whole && sample_rate % 10 == 0 && window % hop == 0;
    read_milliseconds_ = hops_are_whole ? hop : hop + 1;
    // The library makes its windows of tenths of a second in whole frames.
    const unsigned long window_frames = sample_rate / 10 * (window / 100);
    const unsigned long read_frames = read_milliseconds_ * sample_rate / 1000;
    read_share_ = static_cast<double>(read_frames) / static_cast<double>(window_frames);
    hop_energies_.resize((window + hop - 1) / hop + (hops_are_whole ? 0 : 1));
}

void WindowMaximum::end_hop(ebur128_state* state) {
    if (!hops_are_long())
        read_hop(state);
    ++hops_;
    ++usable_hops_;
    if (usable_hops_ * hop_milliseconds_ < window_milliseconds_)
        return;
    const double energy = sums_are_exact_ ? summed_energy() : asked_energy(state);
    if (energy >= 0.0 && energy > max_energy_) { // an empty optional is less than any number
        max_energy_ = energy;
        loudest_hop_ = hops_;
    }
}

void WindowMaximum::skip_hop() {
    ++hops_;
    usable_hops_ = -(weighting_memory_milliseconds / hop_milliseconds_);
}

void WindowMaximum::read_hop(ebur128_state* state) {
    double lufs = 0.0;
    ebur128_loudness_window(state, read_milliseconds_, &lufs);
    hop_energies_[static_cast<std::size_t>(hops_) % hop_energies_.size()] = energy_of(lufs) * read_share_;
}

// The summed energy of the hops that cover the current window: the window's energy or a little more.
double WindowMaximum::summed_energy() const {
    return std::accumulate(hop_energies_.begin(), hop_energies_.end(), 0.0);
}

// The energy of the current window, or 0 if it cannot be the loudest.
double WindowMaximum::asked_energy(ebur128_state* state) const {
    if (!hops_are_long() && summed_energy() * rounding_margin < max_energy_)
        return 0.0;
    double lufs = 0.0;
    ask_(state, &lufs);
    return energy_of(lufs);
}

std::optional<PlacedReading> WindowMaximum::reading() const {
    if (!max_energy_)
        return std::nullopt;
    const auto start_milliseconds = loudest_hop_ * hop_milliseconds_ - window_milliseconds_;
    return PlacedReading{lufs_of(*max_energy_), static_cast<double>(start_milliseconds) / 1000.0};
}

} // namespace headless::audio
