#pragma once
// Commands on tracks and on the transport.

namespace headless::project {
class Track;
}

namespace headless::workstation {

class Workstation;

/// Selects the track and no other; without a track, none. It becomes the last touched one.
void select_only(Workstation& workstation, project::Track* track);

/// Runs the command if it is one of these.
/// @returns false for another number
bool run_track_command(Workstation& workstation, int number);

} // namespace headless::workstation
