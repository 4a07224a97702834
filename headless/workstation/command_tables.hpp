#pragma once
// The tables behind run_command, one for each subject.

#include <span>

namespace headless::workstation {

class Workstation;

struct Command {
    int number;
    void (*run)(Workstation&);
};

using Commands = std::span<const Command>;

Commands take_commands();
Commands item_commands();
Commands split_commands();
Commands clipboard_commands();
Commands track_commands();
Commands session_commands();

} // namespace headless::workstation
