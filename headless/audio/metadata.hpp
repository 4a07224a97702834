#pragma once
// The texts in the header of an audio file: those of broadcast files, and the tags of each format.

#include <sndfile.h>

#include <string>
#include <utility>
#include <vector>

namespace headless::audio {

/// Identifier and text, such as "BWF:Description" and what that says. Empty texts are left out.
using Metadata = std::vector<std::pair<std::string, std::string>>;

/// Of an open file.
Metadata metadata_of(SNDFILE* sound, const SF_INFO& info);

} // namespace headless::audio
