#pragma once
// Commands that extensions of the workstation add: scripts find their numbers by name.

#include <cstddef>
#include <string_view>

namespace headless::workstation {

class Workstation;

struct NamedCommand {
    std::string_view name;  ///< with its underscore
    std::string_view title; ///< as lists of actions show it
    void (*run)(Workstation&);
    int number = 0;
};

/// Null for an unknown name.
const NamedCommand* find_named_command(std::string_view name);

/// Null for an unknown number.
const NamedCommand* find_named_command(int number);

/// In a fixed order; null past the end.
const NamedCommand* named_command_at(std::size_t index);

} // namespace headless::workstation
