#pragma once
// The words in which this folder talks about audio: its format, runs of frames, and who looks at them.
// Samples are interleaved floats, +-1 is full scale; values beyond it are kept as they are.

#include "headless/base/failure.hpp"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace headless {

/// Shape of the audio in one file.
struct AudioFormat {
    int sample_rate = 0; ///< frames a second
    int channels = 0;
    std::int64_t frames = 0; ///< one sample per channel each

    double length_seconds() const { return static_cast<double>(frames) / sample_rate; }
    bool operator==(const AudioFormat&) const = default;
};

/// A run of frames of a file. It may reach beyond the file on either side: there it is silent.
struct FrameRange {
    std::int64_t first_frame = 0;
    std::int64_t frame_count = 0; ///< below 0 counts as 0

    bool operator==(const FrameRange&) const = default;
};

/// Sees the next block of interleaved samples, whole frames. A failure ends the reading and is passed on.
using FrameVisitor = std::function<Result<void>(std::span<const float>)>;

/// Most samples (frames times channels) that a visitor is given at once, or one frame if that is more.
inline constexpr std::size_t block_samples = std::size_t{1} << 14;

} // namespace headless
