#pragma once
// Renders a file and publishes it in one step.

#include "headless/audio/render.hpp"

namespace headless::test {

inline Result<audio::AudioFormat> render_published(audio::AudioCache& cache,
                                                   const std::filesystem::path& source,
                                                   audio::FrameRange range, const audio::GainCurve& gain,
                                                   const std::filesystem::path& target) {
    return audio::render(cache, source, range, gain, target).and_then([&](audio::RenderedFile&& rendered) {
        return rendered.file.publish(ExistingFile::keep).map([&] { return rendered.format; });
    });
}

} // namespace headless::test
