#pragma once
// A LoudnessMeter for the momentary maximum alone, which measures only the audio that may contain it. For use
// inside this folder.

#include "headless/audio/loudness_meter.hpp"

#include <cstdint>
#include <span>
#include <vector>

namespace headless::audio {

/// Finds the same maximum as a LoudnessMeter, without weighting all of the audio.
///
/// The weighting filter takes far longer than sums of squares, and such sums bound the energy that it returns
/// for a stretch of audio: at no frequency is its energy gain larger than a constant plus a multiple of the
/// energy gain of the difference between neighbouring samples. A window whose bound, together with that of
/// the filter's memory before it, lies below the loudest window so far cannot be the maximum. Frames that lie
/// only in such windows are skipped.
class MomentarySearch {
public:
    /// For windows 10 ms apart. Fails as LoudnessMeter::create does.
    static Result<MomentarySearch> create(int sample_rate, int channels);

    /// Processes the next frames, interleaved.
    void process(std::span<const float> samples);

    /// The momentary maximum of all frames processed.
    Loudness readings() const { return meter_.readings(); }

private:
    MomentarySearch(LoudnessMeter meter, int sample_rate, int channels);

    void end_hop();
    bool may_be_loudest() const;
    void measure_pending();
    void skip_first_pending();
    void forget_before(std::size_t end);
    /// Samples from the start of the audio to hop `hop`.
    std::size_t samples_before(std::int64_t hop) const;
    std::span<const float> pending() const { return std::span(buffer_).subspan(pending_begin_); }

    LoudnessMeter meter_;
    std::size_t channels_;
    float slope_;                    // of the bound, over the energy of differences
    double gain_;                    // from the bounds of a stretch to the mean energy of a window in it
    std::vector<double> hop_bounds_; // ring buffer over a window and the memory before it
    // At least one frame that was measured or skipped, then from `pending_begin_` on the frames that were
    // neither.
    std::vector<float> buffer_;
    std::size_t pending_begin_ = channels_;
    std::int64_t hops_ = 0;          // complete ones
    std::int64_t first_pending_ = 0; // of the hops
};

} // namespace headless::audio
