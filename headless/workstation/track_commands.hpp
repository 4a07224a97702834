#pragma once
// What commands on tracks share with functions.

namespace headless::project {
class Track;
}

namespace headless::workstation {

class Workstation;

/// Selects the track and no other; without a track, none. It becomes the last touched one.
void select_only(Workstation& workstation, project::Track* track);

} // namespace headless::workstation
