#include "headless/host/commands.hpp"

#include "headless/host/render_take.hpp"
#include "headless/host/workstation.hpp"

#include <iostream>
#include <string>

namespace headless {
namespace {

void crop_to_active_take(Workstation&, Item& item) { item.crop_to_active_take(); }

void render_to_new_take(Workstation& workstation, Item& item) {
    if (const auto rendered = render_to_new_take(item, workstation); !rendered) {
        workstation.report(rendered.error());
    }
}

// An envelope that is off keeps its points; one that was never there starts at unity.
void toggle_volume_envelope(Workstation&, Item& item) {
    Take* take = item.active_take();
    if (!take) {
        return;
    }
    Envelope* envelope = take->envelope("Volume");
    const bool turns_on = !envelope || !envelope->properties.active;
    if (!envelope) {
        envelope = &take->add_envelope("Volume");
        envelope->set_points({EnvelopePoint{}});
    }
    envelope->properties.active = turns_on;
    envelope->properties.visible = turns_on;
}

struct Command {
    int number;
    void (*run)(Workstation&, Item&);
};

constexpr Command commands[] = {
    {40131, crop_to_active_take},
    {41999, render_to_new_take},
    {40693, toggle_volume_envelope},
};

} // namespace

void run_command(Workstation& workstation, int number) {
    for (const Command& command : commands) {
        if (command.number == number) {
            for (Item* item : workstation.project().selected_items().all()) {
                command.run(workstation, *item);
            }
            return;
        }
    }
    const std::string message = "command " + std::to_string(number) + " is not known and was not run";
    std::cerr << message << '\n';
    workstation.report(Failure{message});
}

} // namespace headless
