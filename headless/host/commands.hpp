#pragma once
// The commands behind Main_OnCommandEx. Each works on the selected items.

namespace headless {

class Workstation;

/// Runs the command of that number. What cannot be done, an unknown number included, becomes a failure of the
/// workstation; the items that it concerns stay as they were.
void run_command(Workstation& workstation, int number);

} // namespace headless
