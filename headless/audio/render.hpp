#pragma once
// Writes a range of an audio file times a gain as a new wav file.

#include "headless/audio/audio_cache.hpp"
#include "headless/audio/gain_curve.hpp"
#include "headless/base/atomic_file.hpp"

#include <filesystem>

namespace headless::audio {

/// A rendered file that is whole, but for its name.
struct StagedRender {
    AtomicFile file;
    AudioFormat format;
};

/// Writes `range` of `source` times `gain` beside `target`, whose name it has when it is published: 32-bit
/// float wav (RF64 past 4 GiB) in the source's sample rate and channels, no clipping, no dither; the same
/// input gives the same bytes. Fails, naming the path at fault, when the source cannot be read or the target
/// cannot be written; then nothing has changed and no temporary file is left.
Result<StagedRender> stage_render(AudioCache& store, const std::filesystem::path& source, FrameRange range,
                                  const GainCurve& gain, const std::filesystem::path& target);

/// The same, published. `ExistingFile::keep` fails when the name is taken.
Result<AudioFormat> render(AudioCache& store, const std::filesystem::path& source, FrameRange range,
                           const GainCurve& gain, const std::filesystem::path& target,
                           ExistingFile existing = ExistingFile::keep);

/// Whether `file` is an audio file that `render` wrote; false where no regular file lies. Fails, naming it,
/// when it cannot be read.
Result<bool> is_own_file(const std::filesystem::path& file);

} // namespace headless::audio
