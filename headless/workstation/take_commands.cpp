// Commands for the takes of the selected items.

#include "headless/workstation/command_tables.hpp"
#include "headless/workstation/render_take.hpp"
#include "headless/workstation/workstation.hpp"

namespace headless::workstation {
namespace {

template <auto edit>
void of_selected_items(Workstation& workstation) {
    for (project::Item* item : workstation.project().selected_items().all())
        edit(workstation, *item);
}

void crop_to_active_take(Workstation&, project::Item& item) { item.crop_to_active_take(); }

// An item keeps its only take.
void delete_active_take(Workstation& workstation, project::Item& item) {
    if (item.takes().size() > 1)
        item.erase_take(*item.active_take());
    else if (!item.takes().empty())
        workstation.report(Failure{"an item's only take is not deleted"});
}

/// Renders nothing after a failed call: the envelope may hold only part of a ride.
void render_to_take(Workstation& workstation, project::Item& item) {
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
    if (!take || take->is_empty)
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

constexpr Command commands[] = {
    {40129, of_selected_items<delete_active_take>},
    {40131, of_selected_items<crop_to_active_take>},
    {41999, of_selected_items<render_to_take>},
    {40693, of_selected_items<toggle_volume_envelope>},
};

} // namespace

Commands take_commands() { return commands; }

} // namespace headless::workstation
