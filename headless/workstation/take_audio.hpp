#pragma once
// The audible part of a take: what it plays over the item's length, and the gain applied to that.

#include "headless/audio/audio_cache.hpp"
#include "headless/audio/gain_curve.hpp"
#include "headless/audio/sound.hpp"
#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"

#include <memory>
#include <string>
#include <vector>

namespace headless::workstation {

struct TakeAudio {
    std::unique_ptr<audio::Sound> sound; ///< at the take's play rate, with the channels it plays
    audio::FrameRange range;             ///< of the sound, over the item's length
    double start_seconds;                ///< of the sound, where the item begins
    bool is_whole_file;                  ///< the sound is the file as it is
};

/// The format of the file with as many frames as can be decoded, whatever its header claims.
Result<audio::AudioFormat> decoded_format(audio::AudioCache& cache, const std::filesystem::path& file);

/// What the source plays, at its own speed. Fails if there is no file, and as AudioCache::format does.
Result<std::unique_ptr<audio::Sound>> sound_of(audio::AudioCache& cache, const project::Source& source);

/// What this host does not play of the take as the workstation does, each as a noun phrase: "a pitch shift".
/// Empty if it plays all of it. What only the file can tell is not considered.
std::vector<std::string> unplayable(const project::Take& take);

/// What the take's item plays, silent outside the source. Fails, naming the take, if there is no file or no
/// length, and for what cannot be played: of what `unplayable` lists all but effects and mute envelopes, of
/// which this audio is independent; channels that the source lacks; sections that overlap when they repeat.
/// @param sample_rate  of the sound; 0 for the file's own
Result<TakeAudio> audio_of(audio::AudioCache& cache, const project::Take& take, int sample_rate = 0);

/// As audio_of, but also fails for effects and mute envelopes.
Result<TakeAudio> heard_audio_of(audio::AudioCache& cache, const project::Take& take, int sample_rate = 0);

/// Take volume times the volume envelope if that is active; frame 0 is the item's first frame.
/// @param factor linear, on top of both
audio::GainCurve gain_of(const project::Take& take, double factor = 1.0);

/// The fades of the item that are not empty, timed from the item's start. Their curvature is left out.
std::vector<audio::Fade> fades_of(const project::Item& item);

/// Whether a fade of the item is bent, of which only the shape is known here.
bool has_bent_fade(const project::Item& item);

/// Item volume, fades, and what gain_of gives.
audio::GainCurve faded_gain_of(const project::Take& take);

} // namespace headless::workstation
