// Host functions about commands other than running them: their names, and the states that buttons show.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/rpp/properties.hpp"
#include "headless/workstation/named_commands.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace headless::functions {
namespace {

constexpr int main_section = 0;

template <class... A>
void do_nothing(A...) {}

/// A number as a text is that number.
int look_up(Workstation& workstation, const char* name) {
    const std::string_view text = name ? name : "";
    int number = 0;
    const char* end = text.data() + text.size();
    if (const auto parsed = std::from_chars(text.data(), end, number);
        parsed.ec == std::errc() && parsed.ptr == end)
        return number;
    if (const workstation::NamedCommand* command = workstation::find_named_command(text))
        return command->number;
    workstation.session.unknown_command = text;
    return 0;
}

const char* name_of(int number) {
    const workstation::NamedCommand* command = workstation::find_named_command(number);
    return command ? command->name.data() + 1 : nullptr; // without the underscore
}

/// Snapping, ripple editing of one track and of all: preferences that are not kept here.
constexpr std::array<int, 3> commands_with_lost_states{1157, 40310, 40311};

constexpr int auto_crossfade_command = 40041;

int auto_crossfade_state(const project::Project& project) {
    return static_cast<int>(rpp::number_of(project, {"AUTOXFADE", 1})) & 1;
}

int get_toggle_state_in(Workstation& workstation, int section, int command) {
    const auto& states = workstation.session.toggle_states;
    const auto state = states.find({section, command});
    if (state != states.end())
        return state->second;
    if (section == main_section && command == auto_crossfade_command)
        return auto_crossfade_state(workstation.project());
    if (section == main_section &&
        std::ranges::find(commands_with_lost_states, command) != commands_with_lost_states.end())
        workstation.report_once({"the state of command " + std::to_string(command) + " is not known"});
    return -1;
}

int get_toggle_state(Workstation& workstation, int command) {
    return get_toggle_state_in(workstation, main_section, command);
}

bool set_toggle_state(Workstation& workstation, int section, int command, int state) {
    workstation.session.toggle_states[{section, command}] = state;
    return true;
}

const workstation::NamedCommand* command_at(int section, int index) {
    return section == main_section && index >= 0
               ? workstation::named_command_at(static_cast<std::size_t>(index))
               : nullptr;
}

int enumerate_into(int section, int index, char* name, int name_size) {
    const workstation::NamedCommand* command = command_at(section, index);
    workstation::copy_text(command ? command->title : "", name, name_size);
    return command ? command->number : 0;
}

int enumerate(int section, int index, const char** name) {
    const workstation::NamedCommand* command = command_at(section, index);
    put(name, command ? command->title.data() : "");
    return command ? command->number : 0;
}

} // namespace

std::span<const workstation::HostFunction> command_functions() {
    static const workstation::HostFunction table[] = {
        {"NamedCommandLookup",
         host_function<look_up>("command_name",
                                "The number of the command of that name, 0 if there is none")},
        {"ReverseNamedCommandLookup",
         host_function<name_of>(
             "command_id", "The command's name without its underscore; nil for commands that have none")},
        {"GetToggleCommandState",
         host_function<get_toggle_state>("command_id", "What SetToggleCommandState has set, otherwise -1")},
        {"GetToggleCommandStateEx",
         host_function<get_toggle_state_in>("section_id,command_id",
                                            "What SetToggleCommandState has set, otherwise -1")},
        {"SetToggleCommandState",
         host_function<set_toggle_state>("section_id,command_id,state",
                                         "Sets the state that a command's button would show")},
        {"RefreshToolbar",
         host_function<do_nothing<int>>("command_id", "Nothing is drawn here: does nothing")},
        {"RefreshToolbar2",
         host_function<do_nothing<int, int>>("section_id,command_id", "Nothing is drawn here: does nothing")},
        {"set_action_options",
         host_function<do_nothing<int>>("flag", "A script runs once here: does nothing")},
        {"CF_EnumerateActions",
         host_function<enumerate_into>("section,index,nameOut,nameOut_sz",
                                       "Number and title of the command of that index among those that have "
                                       "names; 0 past the end")},
        {"kbd_enumerateActions",
         host_function<enumerate>(
             "section,idx,nameOut",
             "Number and title of the command of that index among those that have names; "
             "0 past the end")},
    };
    return table;
}

} // namespace headless::functions
