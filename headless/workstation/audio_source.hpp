#pragma once
// Audio files as the sources of takes.

#include "headless/audio/audio_cache.hpp"
#include "headless/project/project.hpp"

#include <filesystem>

namespace headless::workstation {

/// Creates the source of a take over everything that can be decoded of the file, whatever its header claims.
/// @returns a failure that names the path if the file is not readable audio
Result<project::Source> open_source(audio::AudioCache& audio, const std::filesystem::path& file);

} // namespace headless::workstation
