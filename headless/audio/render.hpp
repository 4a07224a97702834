#pragma once
// Writes a range of a sound times a gain as a new wav file.

#include "headless/audio/gain_curve.hpp"
#include "headless/audio/sound.hpp"
#include "headless/base/atomic_file.hpp"

#include <filesystem>

namespace headless::audio {

/// A complete render that has not been published yet.
struct RenderedFile {
    AtomicFile file;
    AudioFormat format;
};

/// Renders `range` of `source` times `gain`, to be published as `target`: 32-bit float wav (RF64 past 4 GiB)
/// with the source's sample rate and channels, no clipping, no dither. The same input gives the same bytes.
/// Fails, naming the path at fault, if the source cannot be read or the target cannot be written; then
/// nothing has changed and no temporary file is left.
Result<RenderedFile> render(Sound& source, FrameRange range, const GainCurve& gain,
                            const std::filesystem::path& target);

/// The same of a file.
Result<RenderedFile> render(AudioCache& cache, const std::filesystem::path& source, FrameRange range,
                            const GainCurve& gain, const std::filesystem::path& target);

/// Whether `file` is an audio file that `render` wrote; false if it is not a regular file. Fails, naming it,
/// if it cannot be read.
Result<bool> is_own_file(const std::filesystem::path& file);

} // namespace headless::audio
