#pragma once
// What several families of functions ask of sources.

#include "headless/functions/parameters.hpp"

namespace headless::functions {

/// Reads the values that only a file holds: project files do not contain them.
/// @param source  one with a file
/// @returns false if the file cannot be read, which is reported once; the values are 0
bool complete(Workstation& workstation, project::Source& source);

/// In seconds, of a file or a section. 0 while the format of the file is unknown.
double length_of(const project::Source& source);

/// Also for sections of MIDI.
bool is_midi(const project::Source& source);

} // namespace headless::functions
