#include "headless/workstation/commands.hpp"

#include "headless/workstation/named_commands.hpp"
#include "headless/workstation/render_take.hpp"
#include "headless/workstation/track_commands.hpp"
#include "headless/workstation/workstation.hpp"

#include <algorithm>
#include <iterator>
#include <string>

namespace headless::workstation {
namespace {

void crop_to_active_take(Workstation&, project::Item& item) { item.crop_to_active_take(); }

/// Renders nothing after a failed call: the envelope may hold only part of a ride.
void render_to_new_take(Workstation& workstation, project::Item& item) {
    if (workstation.has_failed_call()) {
        workstation.report(Failure{"nothing is rendered, as a host function failed before"});
        return;
    }
    if (const auto rendered = render_to_new_take(item, workstation); !rendered)
        workstation.report(rendered.error());
}

// An inactive envelope keeps its points; a new one starts at unity.
void toggle_volume_envelope(Workstation&, project::Item& item) {
    project::Take* take = item.active_take();
    if (!take)
        return;
    project::Envelope* envelope = take->envelope("Volume");
    const bool turns_on = !envelope || !envelope->properties.active;
    if (!envelope) {
        envelope = &take->add_envelope("Volume");
        envelope->set_points({project::EnvelopePoint{}});
    }
    envelope->properties.active = turns_on;
    envelope->properties.visible = turns_on;
}

struct Command {
    int number;
    void (*run)(Workstation&, project::Item&);
};

constexpr Command commands[] = {
    {40131, crop_to_active_take},
    {41999, render_to_new_take},
    {40693, toggle_volume_envelope},
};

} // namespace

bool is_command(int number) {
    return find_named_command(number) != nullptr ||
           std::ranges::find(commands, number, &Command::number) != std::end(commands);
}

void run_command(Workstation& workstation, int number) {
    for (const Command& command : commands) {
        if (command.number == number) {
            for (project::Item* item : workstation.project().selected_items().all())
                command.run(workstation, *item);
            return;
        }
    }
    if (run_track_command(workstation, number))
        return;
    if (const NamedCommand* command = find_named_command(number)) {
        command->run(workstation);
        return;
    }
    const std::string& unknown_name = workstation.session.unknown_command; // its number is 0
    const std::string name = number == 0 && !unknown_name.empty() ? unknown_name : std::to_string(number);
    workstation.report(Failure{"command " + name + " is not known and was not run"});
}

} // namespace headless::workstation
