#include "headless/workstation/commands.hpp"

#include "headless/workstation/command_tables.hpp"
#include "headless/workstation/workstation.hpp"

#include <algorithm>
#include <string>

namespace headless::workstation {
namespace {

const Command* find_command(int number) {
    for (const Commands table :
         {take_commands(), item_commands(), split_commands(), clipboard_commands(), session_commands()}) {
        const auto command = std::ranges::find(table, number, &Command::number);
        if (command != table.end())
            return &*command;
    }
    return nullptr;
}

} // namespace

bool is_command(int number) { return find_command(number) != nullptr; }

void run_command(Workstation& workstation, int number) {
    if (const Command* command = find_command(number))
        command->run(workstation);
    else
        workstation.report(Failure{"command " + std::to_string(number) + " is not known and was not run"});
}

} // namespace headless::workstation
