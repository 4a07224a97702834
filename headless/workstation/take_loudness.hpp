#pragma once
// Loudness of takes: as they are heard, and as they were recorded.

#include "headless/audio/loudness.hpp"
#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"

#include <filesystem>

namespace headless::workstation {

class Workstation;

/// Loudness of the take as heard over its item: includes item volume, take volume and active volume envelope,
/// but not track volumes and mutes. Maxima are searched at the workstation's hop, whatever the request says.
/// Those of a file that is played as it is are cached, so repeated calls are free. Fails as heard_audio_of does, and for a take under 0.4 s, which
/// has no momentary level.
Result<audio::Loudness> heard_loudness(Workstation& workstation, const project::Take& take,
                                       audio::LoudnessRequest request);

/// The momentary maximum of heard_loudness in LUFS; negative infinity for silence.
Result<double> heard_momentary_maximum(Workstation& workstation, const project::Take& take);

/// The momentary maximum of the whole file as it was recorded, in LUFS. Fails as heard_loudness does.
Result<double> recorded_momentary_maximum(Workstation& workstation, const std::filesystem::path& file);

} // namespace headless::workstation
