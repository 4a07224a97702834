#include "headless/workstation/commands.hpp"

#include "headless/workstation/command_tables.hpp"
#include "headless/workstation/named_commands.hpp"
#include "headless/workstation/workstation.hpp"

#include <algorithm>
#include <string>

namespace headless::workstation {
namespace {

const Command* find_command(int number) {
    for (const Commands table : {take_commands(), item_commands(), split_commands(), clipboard_commands(),
                                 track_commands(), session_commands()}) {
        const auto command = std::ranges::find(table, number, &Command::number);
        if (command != table.end())
            return &*command;
    }
    return nullptr;
}

} // namespace

bool is_command(int number) {
    return find_command(number) != nullptr || find_named_command(number) != nullptr;
}

void run_command(Workstation& workstation, int number) {
    if (const Command* command = find_command(number)) {
        command->run(workstation);
        return;
    }
    if (const NamedCommand* command = find_named_command(number)) {
        command->run(workstation);
        return;
    }
    const std::string& unknown_name = workstation.session.unknown_command; // its number is 0
    const std::string name = number == 0 && !unknown_name.empty() ? unknown_name : std::to_string(number);
    workstation.report(Failure{"command " + name + " is not known and was not run"});
}

} // namespace headless::workstation
