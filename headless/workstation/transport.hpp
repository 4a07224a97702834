#pragma once
// Play, pause, stop and record. Nothing sounds: they change the state that scripts ask for.

#include "headless/project/project.hpp"

namespace headless::workstation {

void play(project::Project& project);

/// Switches between playing and paused; does nothing while stopped.
void pause(project::Project& project);

void stop(project::Project& project);

/// Begins to record, or stops if that is going on.
void record(project::Project& project);

} // namespace headless::workstation
