#pragma once
// The basic audio types of this folder: format, ranges of frames, and the visitor that receives them. Samples
// are interleaved floats, +-1 is full scale; values beyond it are kept as they are.

#include "headless/base/failure.hpp"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace headless::audio {

/// Format of the audio in one file.
struct AudioFormat {
    int sample_rate = 0; ///< frames per second
    int channels = 0;
    std::int64_t frames = 0; ///< a frame is one sample of each channel

    double length_seconds() const { return static_cast<double>(frames) / sample_rate; }
    bool operator==(const AudioFormat&) const = default;
};

/// A recording that is shorter than its header claims.
struct Truncation {
    std::int64_t decoded_frames = 0;
    std::int64_t claimed_frames = 0;
};

/// A range of frames of a file. It may extend beyond the file on either side; those frames are silent.
struct FrameRange {
    std::int64_t first_frame = 0;
    std::int64_t frame_count = 0; ///< below 0 counts as 0

    bool operator==(const FrameRange&) const = default;
};

/// Receives the next block of interleaved samples, always whole frames. A failure ends the read and is passed
/// on.
using FrameVisitor = std::function<Result<void>(std::span<const float>)>;

/// Maximum number of samples (frames times channels) passed to a visitor at once, or one frame if that is
/// more.
inline constexpr std::size_t block_samples = std::size_t{1} << 14;

} // namespace headless::audio
