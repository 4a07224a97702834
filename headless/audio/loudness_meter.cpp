#include "headless/audio/loudness_meter.hpp"

#include <algorithm>
#include <cmath>
#include <new>
#include <string>

namespace headless {
namespace {

constexpr int lowest_sample_rate = 2000; // below, the weighting filter's shelf lies beyond the spectrum
constexpr int most_channels = 64;        // as the library has it
constexpr std::size_t momentary_hops = 40;
constexpr std::size_t short_term_hops = 300;
constexpr double shortest_integrated_seconds = 0.4;
constexpr double shortest_range_seconds = 3.0;

int library_mode(const LoudnessRequest& request) {
    return (request.integrated ? EBUR128_MODE_I : 0) | (request.range ? EBUR128_MODE_LRA : 0) |
           (request.true_peak ? EBUR128_MODE_TRUE_PEAK : 0);
}

// What a reading function of the library says; empty when that is no number.
std::optional<double> ask(int (*reading)(ebur128_state*, double*), ebur128_state* state) {
    double value = 0.0;
    const bool is_read = reading(state, &value) == EBUR128_SUCCESS && !std::isnan(value);
    return is_read ? std::optional(value) : std::nullopt;
}

} // namespace

Result<LoudnessMeter> LoudnessMeter::create(int sample_rate, int channels, const LoudnessRequest& request) {
    if (request.hop_milliseconds < 1 || request.hop_milliseconds % WeightedEnergy::hop_milliseconds != 0) {
        return tl::unexpected(Failure{"loudness windows lie whole steps of 10 ms apart"});
    }
    const auto undefined = tl::unexpected(Failure{"loudness is not defined for " + std::to_string(channels) +
                                                  " channels at " + std::to_string(sample_rate) + " Hz"});
    if (sample_rate < lowest_sample_rate || channels < 1 || channels > most_channels) {
        return undefined;
    }
    Library library;
    if (const int mode = library_mode(request); mode != 0) {
        library.reset(
            ebur128_init(static_cast<unsigned>(channels), static_cast<unsigned long>(sample_rate), mode));
        if (!library) {
            return undefined;
        }
    }
    return LoudnessMeter(sample_rate, channels, request, std::move(library));
}

LoudnessMeter::LoudnessMeter(int sample_rate, int channels, const LoudnessRequest& request, Library library)
    : sample_rate_(sample_rate), channels_(static_cast<std::size_t>(channels)), request_(request),
      library_(std::move(library)) {
    if (request.momentary_maximum || request.short_term_maximum) {
        energy_.emplace(sample_rate, channels);
    }
}

void LoudnessMeter::take(std::span<const float> heard) {
    if (energy_) {
        energy_->take(heard);
    }
    // The place of a true peak is that of the piece it lies in.
    const std::size_t piece =
        request_.true_peak ? static_cast<std::size_t>(sample_rate_) / 100 * channels_ : heard.size();
    while (!heard.empty()) {
        const auto count = std::min(piece, heard.size());
        add_to_library(heard.first(count));
        heard = heard.subspan(count);
        frames_ += static_cast<std::int64_t>(count / channels_);
    }
}

void LoudnessMeter::add_to_library(std::span<const float> heard) {
    if (!library_) {
        return;
    }
    if (ebur128_add_frames_float(library_.get(), heard.data(), heard.size() / channels_) != EBUR128_SUCCESS) {
        throw std::bad_alloc();
    }
    if (request_.true_peak) {
        note_true_peak();
    }
}

void LoudnessMeter::note_true_peak() {
    for (unsigned channel = 0; channel < library_->channels; ++channel) {
        double peak = 0.0;
        ebur128_prev_true_peak(library_.get(), channel, &peak);
        if (peak > true_peak_.value) {
            true_peak_ = {peak, seconds_taken()};
        }
    }
}

Loudness LoudnessMeter::finish() {
    Loudness loudness;
    if (request_.integrated && seconds_taken() >= shortest_integrated_seconds) {
        loudness.integrated_lufs = ask(ebur128_loudness_global, library_.get());
    }
    if (request_.range && seconds_taken() >= shortest_range_seconds) {
        loudness.range_lu = ask(ebur128_loudness_range, library_.get());
    }
    if (request_.true_peak && frames_ > 0) {
        loudness.true_peak_dbtp = {20.0 * std::log10(true_peak_.value), true_peak_.position_seconds};
    }
    if (energy_) {
        energy_->finish();
    }
    const auto step_hops =
        static_cast<std::size_t>(request_.hop_milliseconds / WeightedEnergy::hop_milliseconds);
    if (request_.momentary_maximum) {
        loudness.momentary_maximum_lufs = energy_->loudest_window(momentary_hops, step_hops);
    }
    if (request_.short_term_maximum) {
        loudness.short_term_maximum_lufs = energy_->loudest_window(short_term_hops, step_hops);
    }
    return loudness;
}

} // namespace headless
