#pragma once
// Times as the user reads and types them, in the units of the ruler. Positions are shown with the project's
// start added to them, and measures from 1; lengths are shown as they are, and beats of them from 0.
//
//   time       1:02.500, with hours from an hour on     samples   2756250
//   beats      measure.beat.hundredths: 32.2.00         timecode  00:01:02:15, drop frame if the project says so
//   beats_and_time  32.2.00 / 1:02.500                  frames    1875
//   seconds    62.500

#include "headless/project/timeline.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace headless::project {

class Project;

/// The project's frames a second. Drop frame and the rates next to 24, 30 and 60 are exact: 30000/1001.
double exact_frame_rate(const Project& project);

/// The ruler of that number: -1 is the project's own. Empty for an unknown number.
std::optional<RulerMode> ruler_of(const Project& project, int number);

/// Minutes and seconds with three decimals, without the project's start.
std::string clock_text(double seconds);

std::string position_text(const Project& project, double seconds, RulerMode mode);

/// @param from_seconds  where the length begins, which decides what beats it has
std::string length_text(const Project& project, double length_seconds, double from_seconds, RulerMode mode);

/// Hours, minutes and seconds, of which only the last must be there. What is not a number counts as 0, here and
/// in the next two.
double parse_clock(std::string_view text);

/// The reverse of position_text. Parts may be missing: "5" is a measure, and in timecode a frame.
double parse_position(const Project& project, std::string_view text, RulerMode mode);

/// The reverse of length_text.
double parse_length(const Project& project, std::string_view text, double from_seconds, RulerMode mode);

} // namespace headless::project
