#pragma once
// Loudness of takes: as they are heard, and as they were recorded.

#include "headless/audio/loudness.hpp"
#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"

#include <filesystem>

namespace headless {

class Workstation;

/// What is heard of the take over its item: item volume, take volume and active volume envelope are in it,
/// track volumes and mutes are not. Maxima are sought at the workstation's hop, whatever the request says;
/// they are kept, so that asking again is free. Fails as audio_of does, and for a take under 0.4 s: a
/// momentary level made up for it would be acted on.
Result<Loudness> heard_loudness(Workstation& workstation, const Take& take, LoudnessRequest request);

/// Of the above the momentary maximum in LUFS; negative infinity for silence.
Result<double> heard_momentary_maximum(Workstation& workstation, const Take& take);

/// The momentary maximum of the whole file as it was recorded, in LUFS. Fails as the above.
Result<double> recorded_momentary_maximum(Workstation& workstation, const std::filesystem::path& file);

} // namespace headless
