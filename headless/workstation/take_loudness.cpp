#include "headless/workstation/take_loudness.hpp"

#include "headless/audio/loudness_cache.hpp"
#include "headless/workstation/take_audio.hpp"
#include "headless/workstation/workstation.hpp"

#include <string>

namespace headless::workstation {
namespace {

tl::unexpected<Failure> too_short(const std::string& what, const std::filesystem::path& file) {
    return tl::unexpected(Failure{what + ": too short for a loudness reading", file});
}

} // namespace

Result<audio::Loudness> heard_loudness(Workstation& workstation, const project::Take& take,
                                       audio::LoudnessRequest request) {
    const auto audio = heard_audio_of(workstation.audio(), take);
    if (!audio)
        return tl::unexpected(audio.error());
    request.hop_milliseconds = workstation.loudness_hop_milliseconds;
    const audio::GainCurve gain = gain_of(take, take.item().volume);
    auto loudness = audio->is_whole_file
                        ? workstation.loudness().measure(audio->sound->file(), audio->range, gain, request)
                        : audio::measure_loudness(*audio->sound, audio->range, gain, request);
    if (loudness && request.momentary_maximum && !loudness->momentary_maximum_lufs)
        return too_short("take '" + take.name + "'", take.source.root().file);
    return loudness;
}

Result<double> heard_momentary_maximum(Workstation& workstation, const project::Take& take) {
    return heard_loudness(workstation, take, audio::LoudnessRequest::momentary_only())
        .map([](const audio::Loudness& loudness) { return loudness.momentary_maximum_lufs->value; });
}

Result<double> recorded_momentary_maximum(Workstation& workstation, const std::filesystem::path& file) {
    const auto format = workstation.audio().format(file);
    if (!format)
        return tl::unexpected(format.error());
    audio::LoudnessRequest request = audio::LoudnessRequest::momentary_only();
    request.hop_milliseconds = workstation.loudness_hop_milliseconds;
    const auto loudness =
        workstation.loudness().measure(file, {0, format->frames}, audio::GainCurve(), request);
    if (!loudness)
        return tl::unexpected(loudness.error());
    if (!loudness->momentary_maximum_lufs)
        return too_short(file.string(), file);
    return loudness->momentary_maximum_lufs->value;
}

} // namespace headless::workstation
