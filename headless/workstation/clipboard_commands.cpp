// Commands that copy, cut and paste items.

#include "headless/workstation/command_tables.hpp"
#include "headless/workstation/item_clipboard.hpp"
#include "headless/workstation/workstation.hpp"

#include <cstddef>

namespace headless::workstation {
namespace {

void copy_items(Workstation& workstation) {
    workstation.item_clipboard().copy_selected(workstation.project());
}

// What the workstation copies depends on where the user has worked last.
void copy(Workstation& workstation) {
    const project::Project& project = workstation.project();
    if (project.selected_items().size() == 0 && project.selected_tracks().size() > 0)
        workstation.report(Failure{"tracks are not copied: select items"});
    copy_items(workstation);
}

void cut_items(Workstation& workstation) {
    copy_items(workstation);
    for (project::Item* item : workstation.project().selected_items().all())
        item->track().erase_item(*item);
}

std::size_t track_to_paste_on(const Workstation& workstation, const project::Project& project) {
    const project::Track* touched = workstation.track_session.last_touched(project);
    const project::Track* track = touched ? touched : project.selected_tracks().at(0);
    return track ? track->index() : 0;
}

void paste(Workstation& workstation) {
    const ItemClipboard& clipboard = workstation.item_clipboard();
    project::Project& project = workstation.project();
    if (!clipboard.is_empty())
        project.cursor_seconds =
            clipboard.paste(project, track_to_paste_on(workstation, project), project.cursor_seconds);
}

constexpr Command commands[] = {
    {40057, copy}, {40058, paste}, {40307, cut_items}, {40698, copy_items}, {42398, paste},
};

} // namespace

Commands clipboard_commands() { return commands; }

} // namespace headless::workstation
