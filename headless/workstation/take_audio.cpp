#include "headless/workstation/take_audio.hpp"

#include <cmath>
#include <string>

namespace headless::workstation {
namespace {

constexpr double max_frames = 9007199254740992.0; // 2^53: beyond it a double skips frames

// The first unsupported setting of the take; empty if there is none.
std::string unsupported_setting(const project::Take& take) {
    if (take.play_rate != 1.0)
        return "a play rate other than 1";
    if (take.pitch_semitones != 0.0)
        return "a pitch shift";
    return take.channel_mode != 0 ? "a channel mode" : "";
}

tl::unexpected<Failure> failure_of(const project::Take& take, const std::string& reason) {
    return tl::unexpected(Failure{"take '" + take.name + "': " + reason, take.source.root().file});
}

} // namespace

Result<audio::AudioFormat> decoded_format(audio::AudioCache& cache, const std::filesystem::path& file) {
    return cache.read(file, {0, 1}, [](std::span<const float>) { return Result<void>(); }).and_then([&] {
        return cache.format(file);
    });
}

Result<TakeAudio> audio_of(audio::AudioCache& cache, const project::Take& take) {
    if (const std::string setting = unsupported_setting(take); !setting.empty())
        return failure_of(take, setting + " is not supported");
    if (take.source.root().file.empty())
        return failure_of(take, "has no audio file");
    const Result<audio::AudioFormat> format = cache.format(take.source.root().file);
    if (!format)
        return tl::unexpected(format.error());
    const double first = std::round(take.start_offset_seconds * format->sample_rate);
    const double count = std::round(take.item().length_seconds() * format->sample_rate);
    if (!(count >= 1.0 && count < max_frames && std::abs(first) < max_frames))
        return failure_of(take, "its item has no usable length");
    const audio::FrameRange range{static_cast<std::int64_t>(first), static_cast<std::int64_t>(count)};
    if (take.item().loop && range.first_frame + range.frame_count > format->frames)
        return failure_of(take, "a source that repeats is not supported");
    return TakeAudio{*format, range};
}

audio::GainCurve gain_of(const project::Take& take, double factor) {
    const project::Envelope* envelope = take.envelope("Volume");
    if (envelope && envelope->properties.active)
        return audio::GainCurve(*envelope, 0.0, factor * take.volume);
    return audio::GainCurve(factor * take.volume);
}

} // namespace headless::workstation
