#pragma once
// The commands behind Main_OnCommandEx.

namespace headless::workstation {

class Workstation;

/// Whether run_command knows the number.
bool is_command(int number);

/// Runs the command of that number. What cannot be done, including an unknown number, becomes a failure of
/// the workstation; what it concerns stays as it was.
void run_command(Workstation& workstation, int number);

} // namespace headless::workstation
