#pragma once
// Walks over ranges of frames a block at a time. For use inside this folder.

#include "headless/audio/frames.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace headless::audio {

/// Frames in the largest block that a visitor gets.
inline std::int64_t frames_per_block(int channels) {
    return std::max<std::int64_t>(1, static_cast<std::int64_t>(block_samples) / channels);
}

/// Calls visit(frame, count) for the frames from `first` up to but not including `end`, at most a block at a
/// time.
template <class Visit>
Result<void> for_each_block(std::int64_t first, std::int64_t end, int channels, Visit visit) {
    for (std::int64_t frame = first; frame < end;) {
        const std::int64_t count = std::min(end - frame, frames_per_block(channels));
        if (auto done = visit(frame, count); !done)
            return done;
        frame += count;
    }
    return {};
}

inline Result<void> visit_silence(std::int64_t frames, int channels, const FrameVisitor& visit) {
    if (frames <= 0)
        return {};
    const std::vector<float> silence(
        static_cast<std::size_t>(std::min(frames, frames_per_block(channels)) * channels));
    return for_each_block(0, frames, channels, [&](std::int64_t, std::int64_t count) {
        return visit(std::span(silence).first(static_cast<std::size_t>(count * channels)));
    });
}

/// Calls read(first, end) for the part of the range that has audio, and passes silence to `visit` for what
/// lies before frame 0 and past the last frame.
template <class Read>
Result<void> visit_with_silence(FrameRange range, const AudioFormat& format, const FrameVisitor& visit,
                                Read read) {
    const std::int64_t first = range.first_frame;
    const std::int64_t end = first + std::max<std::int64_t>(0, range.frame_count);
    const std::int64_t audio_first = std::clamp<std::int64_t>(0, first, end);
    const std::int64_t audio_end = std::clamp(format.frames, audio_first, end);
    return visit_silence(audio_first - first, format.channels, visit)
        .and_then([&] { return audio_first < audio_end ? read(audio_first, audio_end) : Result<void>(); })
        .and_then([&] { return visit_silence(end - audio_end, format.channels, visit); });
}

} // namespace headless::audio
