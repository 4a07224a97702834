#pragma once
// The scale of faders, on which scripts see the values of volume envelopes that are drawn that way.

#include "headless/project/envelope.hpp"

namespace headless::functions {

/// The fader's position for a linear gain. Its known points are 0 for silence, 716.2 for unity and 852.8 for a
/// factor of 2; the power that runs through all three gives the others.
double fader_position(double gain);

/// The reverse of fader_position.
double gain_at(double position);

/// As scripts see a value of that envelope, and the reverse.
double to_script(const project::Envelope& envelope, double value);
double from_script(const project::Envelope& envelope, double value);

} // namespace headless::functions
