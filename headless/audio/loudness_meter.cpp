#include "headless/audio/loudness_meter.hpp"

#include <algorithm>
#include <cmath>
#include <new>

namespace headless::audio {
namespace {

constexpr int lowest_sample_rate = 4000;     // below it the weighting filter's shelf is outside the spectrum
constexpr int highest_sample_rate = 2822400; // both are the library's limits
constexpr int max_channels = 64;
constexpr double short_term_seconds = 3.0;

int mode_for(const LoudnessRequest& request) {
    return EBUR128_MODE_M | (request.integrated ? EBUR128_MODE_I : 0) |
           (request.loudness_range ? EBUR128_MODE_LRA : 0) |
           (request.true_peak ? EBUR128_MODE_TRUE_PEAK : 0) |
           (request.short_term_maximum ? EBUR128_MODE_S : 0);
}

// The result of one of the library's reading functions; empty if it is not a number.
std::optional<double> ask(int (*reading)(ebur128_state*, double*), ebur128_state* state) {
    double value = 0.0;
    const bool is_read = reading(state, &value) == EBUR128_SUCCESS && !std::isnan(value);
    return is_read ? std::optional(value) : std::nullopt;
}

} // namespace

bool is_loudness_defined(int sample_rate, int channels) {
    return sample_rate >= lowest_sample_rate && sample_rate <= highest_sample_rate && channels >= 1 &&
           channels <= max_channels;
}

Result<LoudnessMeter> LoudnessMeter::create(int sample_rate, int channels, const LoudnessRequest& request) {
    const auto failure = [](std::string reason) { return tl::unexpected(Failure{std::move(reason)}); };
    if (request.hop_milliseconds < 1)
        return failure("loudness was asked for without a distance of its windows");
    if (!is_loudness_defined(sample_rate, channels)) {
        return failure("loudness is not defined for " + std::to_string(channels) + " channels at " +
                       std::to_string(sample_rate) + " Hz");
    }
    std::unique_ptr<ebur128_state, EburCloser> state(ebur128_init(
        static_cast<unsigned>(channels), static_cast<unsigned long>(sample_rate), mode_for(request)));
    if (!state)
        throw std::bad_alloc(); // the only reason left
    return LoudnessMeter(std::move(state), request);
}

LoudnessMeter::LoudnessMeter(std::unique_ptr<ebur128_state, EburCloser> state, const LoudnessRequest& request)
    : state_(std::move(state)), request_(request),
      momentary_(momentary_window_milliseconds, request.hop_milliseconds, state_->samplerate,
                 ebur128_loudness_momentary),
      short_term_(3000, request.hop_milliseconds, state_->samplerate, ebur128_loudness_shortterm) {}

// Rounded from the start each time, so that hops that are not a whole number of frames do not drift.
std::int64_t LoudnessMeter::hop_end(std::int64_t hop) const {
    const auto sample_rate = static_cast<std::int64_t>(state_->samplerate);
    return ((hop + 1) * request_.hop_milliseconds * sample_rate + 500) / 1000;
}

void LoudnessMeter::process(std::span<const float> samples) {
    while (!samples.empty()) {
        const std::int64_t border = hop_end(hops_);
        const auto up_to_border = static_cast<std::size_t>(border - frames_) * state_->channels;
        const auto piece = samples.first(std::min(samples.size(), up_to_border));
        add(piece);
        samples = samples.subspan(piece.size());
        if (frames_ == border)
            end_hop();
    }
}

void LoudnessMeter::add(std::span<const float> samples) {
    const std::size_t frames = samples.size() / state_->channels;
    if (ebur128_add_frames_float(state_.get(), samples.data(), frames) != EBUR128_SUCCESS)
        throw std::bad_alloc();
    if (request_.true_peak)
        note_true_peak();
    frames_ += static_cast<std::int64_t>(frames);
}

void LoudnessMeter::note_true_peak() {
    for (unsigned channel = 0; channel < state_->channels; ++channel) {
        double peak = 0.0;
        ebur128_prev_true_peak(state_.get(), channel, &peak);
        if (peak > true_peak_.value)
            true_peak_ = {peak, seconds_processed()};
    }
}

void LoudnessMeter::end_hop() {
    ++hops_;
    if (request_.momentary_maximum)
        momentary_.end_hop(state_.get());
    if (request_.short_term_maximum)
        short_term_.end_hop(state_.get());
}

void LoudnessMeter::skip_hop() {
    frames_ = hop_end(hops_);
    ++hops_;
    momentary_.skip_hop();
    short_term_.skip_hop();
}

double LoudnessMeter::seconds_processed() const {
    return static_cast<double>(frames_) / static_cast<double>(state_->samplerate);
}

Loudness LoudnessMeter::readings() const {
    Loudness loudness;
    if (request_.integrated && seconds_processed() >= momentary_window_seconds)
        loudness.integrated_lufs = ask(ebur128_loudness_global, state_.get());
    if (request_.loudness_range && seconds_processed() >= short_term_seconds)
        loudness.loudness_range_lu = ask(ebur128_loudness_range, state_.get());
    if (request_.true_peak && frames_ > 0)
        loudness.true_peak_dbtp = {20.0 * std::log10(true_peak_.value), true_peak_.position_seconds};
    if (request_.momentary_maximum)
        loudness.momentary_maximum_lufs = momentary_.reading();
    if (request_.short_term_maximum)
        loudness.short_term_maximum_lufs = short_term_.reading();
    return loudness;
}

} // namespace headless::audio
