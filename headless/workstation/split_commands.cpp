// Commands that split items: the selected ones or, if none is, all.

#include "headless/project/grid_lines.hpp"
#include "headless/rpp/item_edges.hpp"
#include "headless/workstation/command_tables.hpp"
#include "headless/workstation/workstation.hpp"

#include <vector>

namespace headless::workstation {
namespace {

std::vector<project::Item*> items_to_split(const project::Project& project) {
    if (project.selected_items().size() > 0)
        return project.selected_items().all();
    std::vector<project::Item*> items;
    for (const auto& track : project.tracks())
        for (const auto& item : track->items())
            items.push_back(item.get());
    return items;
}

enum class Selects { as_before, left, right };

void split_at(project::Project& project, double seconds, Selects selects) {
    for (project::Item* left : items_to_split(project)) {
        project::Item* right = rpp::split_item(*left, seconds);
        if (!right || selects == Selects::as_before)
            continue;
        left->set_selected(selects == Selects::left);
        right->set_selected(selects == Selects::right);
    }
}

template <Selects selects>
void split_at_cursor(Workstation& workstation) {
    split_at(workstation.project(), workstation.project().cursor_seconds, selects);
}

// While it plays, the workstation splits at what is heard.
void split_at_edit_or_play_cursor(Workstation& workstation) {
    project::Project& project = workstation.project();
    const bool is_playing = (project.play_state & 1) != 0;
    split_at(project, is_playing ? project.play_position_seconds : project.cursor_seconds,
             Selects::as_before);
}

void split_at_time_selection(Workstation& workstation) {
    project::Project& project = workstation.project();
    const project::TimeRange selection = project.time_selection();
    if (!(selection.end_seconds > selection.start_seconds))
        return;
    split_at(project, selection.start_seconds, Selects::as_before);
    split_at(project, selection.end_seconds, Selects::as_before);
}

void split_at_grid(Workstation& workstation) {
    project::Project& project = workstation.project();
    for (project::Item* item : items_to_split(project)) {
        double line = project::next_grid_line(project, item->position_seconds());
        while (item && line < item->end_seconds()) {
            item = rpp::split_item(*item, line);
            line = project::next_grid_line(project, line);
        }
    }
}

constexpr Command commands[] = {
    {40012, split_at_edit_or_play_cursor},        {40061, split_at_time_selection},
    {40757, split_at_cursor<Selects::as_before>}, {40758, split_at_cursor<Selects::left>},
    {40759, split_at_cursor<Selects::right>},     {40932, split_at_grid},
};

} // namespace

Commands split_commands() { return commands; }

} // namespace headless::workstation
