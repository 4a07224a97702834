#include "headless/audio/weighted_energy.hpp"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace headless {
namespace {

constexpr double loudness_offset_lu = 0.691; // LUFS = 10 log10(mean energy) - 0.691

// A block is filtered in four parts side by side, which takes half the time of one after the other. Each part
// begins with a silent filter and the sound before it; meanwhile the filter forgets to eight digits.
constexpr std::size_t parts = 4;
constexpr double history_seconds = 0.08;
constexpr int block_seconds = 2;

// Far below all sound: keeps the filter's memory of silence out of the denormal numbers, which are slow.
constexpr double bias = 1e-30;

struct Four {
    std::array<double, parts> at{};

    friend Four operator+(const Four& left, const Four& right) {
        Four sum;
        for (std::size_t i = 0; i < parts; ++i) {
            sum.at[i] = left.at[i] + right.at[i];
        }
        return sum;
    }
    friend Four operator*(double factor, const Four& value) {
        Four product;
        for (std::size_t i = 0; i < parts; ++i) {
            product.at[i] = factor * value.at[i];
        }
        return product;
    }
};

// One section and its memory, for four signals at once.
struct FourFilters {
    FilterSection section;
    Four first{};
    Four second{};

    Four filter(const Four& x) {
        const Four y = section.b[0] * x + first;
        first = section.b[1] * x + -section.a[0] * y + second;
        second = section.b[2] * x + -section.a[1] * y;
        return y;
    }
};

// The Recommendation tabulates both sections for 48 kHz. The numbers here are those of the analogue filters
// behind the tables, so that other sample rates get the same curve.
FilterSection shelf(double sample_rate) {
    constexpr double quality = 0.7071752369554196;
    const double high_gain = std::pow(10.0, 3.999843853973347 / 20.0);
    const double band_gain = std::pow(high_gain, 0.4996667741545416);
    const double k = std::tan(std::numbers::pi * 1681.974450955533 / sample_rate);
    const double scale = 1.0 / (1.0 + k / quality + k * k);
    return {{scale * (high_gain + band_gain * k / quality + k * k), scale * 2.0 * (k * k - high_gain),
             scale * (high_gain - band_gain * k / quality + k * k)},
            {scale * 2.0 * (k * k - 1.0), scale * (1.0 - k / quality + k * k)}};
}

FilterSection high_pass(double sample_rate) {
    constexpr double quality = 0.5003270373238773;
    const double k = std::tan(std::numbers::pi * 38.13547087602444 / sample_rate);
    const double scale = 1.0 / (1.0 + k / quality + k * k);
    return {{1.0, -2.0, 1.0}, {scale * 2.0 * (k * k - 1.0), scale * (1.0 - k / quality + k * k)}};
}

// By the usual order of channels: left, right, centre, low frequency, surrounds. The low-frequency channel
// does not count, nor do channels past the sixth; four and five channels have none of low frequency.
double channel_weight(std::size_t channel, std::size_t channels) {
    constexpr double surround = 1.41;
    const std::size_t fronts = channels == 4 ? 2 : 3;
    if (channel < fronts) {
        return 1.0;
    }
    const std::size_t first_surround = channels > 5 ? fronts + 1 : fronts;
    return channel >= first_surround && channel < first_surround + 2 ? surround : 0.0;
}

double sum_of(std::span<const float> values) {
    Four sums; // four at once wait less for each other than one after the other
    for (; values.size() >= parts; values = values.subspan(parts)) {
        for (std::size_t i = 0; i < parts; ++i) {
            sums.at[i] += static_cast<double>(values[i]);
        }
    }
    return std::accumulate(values.begin(), values.end(),
                           (sums.at[0] + sums.at[1]) + (sums.at[2] + sums.at[3]));
}

// Squares of the weighted `history` + parts * part_frames samples, without the history's.
void weigh(const FilterSection& shelf, const FilterSection& high_pass, const float* samples,
           std::size_t history, std::size_t part_frames, float* squares) {
    FourFilters first{shelf, {}, {}};
    FourFilters second{high_pass, {}, {}};
    const auto weighted = [&](std::size_t i) {
        Four x;
        for (std::size_t part = 0; part < parts; ++part) {
            x.at[part] = static_cast<double>(samples[part * part_frames + i]) + bias;
        }
        return second.filter(first.filter(x));
    };
    for (std::size_t i = 0; i < history; ++i) {
        weighted(i);
    }
    for (std::size_t i = 0; i < part_frames; ++i) {
        const Four y = weighted(history + i);
        for (std::size_t part = 0; part < parts; ++part) {
            squares[part * part_frames + i] = static_cast<float>(y.at[part] * y.at[part]);
        }
    }
}

} // namespace

WeightedEnergy::WeightedEnergy(int sample_rate, int channels)
    : sample_rate_(sample_rate), shelf_(shelf(sample_rate)), high_pass_(high_pass(sample_rate)),
      history_frames_(static_cast<std::size_t>(sample_rate * history_seconds)),
      block_frames_(parts * ((static_cast<std::size_t>(sample_rate) * block_seconds + parts - 1) / parts)),
      samples_(static_cast<std::size_t>(channels), std::vector<float>(history_frames_ + block_frames_)),
      squares_(block_frames_) {}

void WeightedEnergy::take(std::span<const float> frames) {
    const std::size_t channels = samples_.size();
    while (!frames.empty()) {
        const std::size_t count = std::min(frames.size() / channels, block_frames_ - filled_frames_);
        const std::size_t place = history_frames_ + filled_frames_;
        if (channels == 1) {
            std::copy_n(frames.begin(), count, samples_[0].data() + place);
        } else {
            take_apart(frames.first(count * channels), place);
        }
        frames = frames.subspan(count * channels);
        filled_frames_ += count;
        if (filled_frames_ == block_frames_) {
            weigh_block();
        }
    }
}

void WeightedEnergy::take_apart(std::span<const float> frames, std::size_t place) {
    const std::size_t channels = samples_.size();
    for (std::size_t channel = 0; channel < channels; ++channel) {
        float* target = samples_[channel].data() + place;
        for (std::size_t i = channel; i < frames.size(); i += channels) {
            *target++ = frames[i];
        }
    }
}

void WeightedEnergy::finish() { weigh_block(); }

void WeightedEnergy::weigh_block() {
    if (filled_frames_ == 0) {
        return;
    }
    const std::size_t part_frames = (filled_frames_ + parts - 1) / parts;
    for (std::size_t channel = 0; channel < samples_.size(); ++channel) {
        auto& samples = samples_[channel];
        weigh(shelf_, high_pass_, samples.data(), history_frames_, part_frames, squares_.data());
        add_squares(channel);
        std::copy_n(samples.begin() + static_cast<std::ptrdiff_t>(filled_frames_), history_frames_,
                    samples.begin());
    }
    weighed_frames_ += static_cast<std::int64_t>(filled_frames_);
    filled_frames_ = 0;
}

void WeightedEnergy::add_squares(std::size_t channel) {
    const double weight = channel_weight(channel, samples_.size());
    std::size_t hop = whole_hops();
    for (std::size_t done = 0; done < filled_frames_; ++hop) {
        const auto end = std::min(static_cast<std::size_t>(hop_end(hop) - weighed_frames_), filled_frames_);
        if (hop == hop_energies_.size()) {
            hop_energies_.push_back(0.0);
        }
        hop_energies_[hop] += weight * sum_of(std::span(squares_).subspan(done, end - done));
        done = end;
    }
}

// Rounded from the start each time, so that hops of no whole number of frames do not drift.
std::int64_t WeightedEnergy::hop_end(std::size_t hop) const {
    return ((static_cast<std::int64_t>(hop) + 1) * hop_milliseconds * sample_rate_ + 500) / 1000;
}

// Those that end at or before the block.
std::size_t WeightedEnergy::whole_hops() const {
    std::size_t hops = hop_energies_.size();
    while (hops > 0 && hop_end(hops - 1) > weighed_frames_) {
        --hops;
    }
    return hops;
}

std::optional<PlacedReading> WeightedEnergy::loudest_window(std::size_t window_hops,
                                                            std::size_t step_hops) const {
    double most_energy = -1.0;
    std::size_t loudest_end = 0;
    for (std::size_t end = step_hops; end <= whole_hops(); end += step_hops) {
        const auto past = hop_energies_.begin() + static_cast<std::ptrdiff_t>(end);
        const double energy =
            end < window_hops ? -1.0
                              : std::accumulate(past - static_cast<std::ptrdiff_t>(window_hops), past, 0.0);
        if (energy > most_energy) {
            most_energy = energy;
            loudest_end = end;
        }
    }
    if (most_energy < 0.0) {
        return std::nullopt;
    }
    const double seconds_per_hop = hop_milliseconds / 1000.0;
    const double window_frames = static_cast<double>(window_hops) * seconds_per_hop * sample_rate_;
    return PlacedReading{10.0 * std::log10(most_energy / window_frames) - loudness_offset_lu,
                         static_cast<double>(loudest_end - window_hops) * seconds_per_hop};
}

} // namespace headless
