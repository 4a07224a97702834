// Commands that select, group and delete items, and that take times from them.

#include "headless/rpp/properties.hpp"
#include "headless/workstation/command_tables.hpp"
#include "headless/workstation/workstation.hpp"

#include <algorithm>
#include <set>
#include <vector>

namespace headless::workstation {
namespace {

constexpr rpp::FieldPlace group_place{"GROUP", 1};

template <class Edit>
void for_all_items(const project::Project& project, Edit edit) {
    for (const auto& track : project.tracks())
        for (const auto& item : track->items())
            edit(*item);
}

void unselect_items(Workstation& workstation) { workstation.project().select_all_items(false); }

void select_items(Workstation& workstation) { workstation.project().select_all_items(true); }

void unselect_points(const std::vector<std::unique_ptr<project::Envelope>>& envelopes) {
    for (const auto& envelope : envelopes) {
        if (std::ranges::none_of(envelope->points(), &project::EnvelopePoint::selected))
            continue;
        std::vector<project::EnvelopePoint> points(envelope->points().begin(), envelope->points().end());
        for (project::EnvelopePoint& point : points)
            point.selected = false;
        envelope->set_points(std::move(points));
    }
}

void unselect_all(Workstation& workstation) {
    project::Project& project = workstation.project();
    project.select_all_items(false);
    project.master().set_selected(false);
    unselect_points(project.master().envelopes());
    for (const auto& track : project.tracks()) {
        track->set_selected(false);
        unselect_points(track->envelopes());
    }
    for_all_items(project, [](const project::Item& item) {
        for (const auto& take : item.takes())
            unselect_points(take->envelopes());
    });
}

void select_on_selected_tracks(Workstation& workstation) {
    for (const project::Track* track : workstation.project().selected_tracks().all())
        for (const auto& item : track->items())
            item->set_selected(true);
}

bool overlaps(const project::Item& item, const project::TimeRange& range) {
    return item.position_seconds() < range.end_seconds && item.end_seconds() > range.start_seconds;
}

template <class Wanted>
void select_in_time_selection(project::Project& project, Wanted is_wanted) {
    const project::TimeRange selection = project.time_selection();
    if (!(selection.end_seconds > selection.start_seconds))
        return;
    for_all_items(project, [&](project::Item& item) {
        item.set_selected(overlaps(item, selection) && is_wanted(item));
    });
}

void select_in_time(Workstation& workstation) {
    select_in_time_selection(workstation.project(), [](const project::Item&) { return true; });
}

void select_in_time_on_selected_tracks(Workstation& workstation) {
    select_in_time_selection(workstation.project(),
                             [](const project::Item& item) { return item.track().selected(); });
}

void select_groups(Workstation& workstation) {
    std::set<double> groups;
    for (const project::Item* item : workstation.project().selected_items().all())
        groups.insert(rpp::number_of(*item, group_place));
    groups.erase(0.0);
    for_all_items(workstation.project(), [&](project::Item& item) {
        if (groups.contains(rpp::number_of(item, group_place)))
            item.set_selected(true);
    });
}

void set_group(project::Project& project, double group) {
    for (project::Item* item : project.selected_items().all())
        rpp::set_number(*item, group_place, group);
}

void group_items(Workstation& workstation) {
    double last = 0.0;
    for_all_items(workstation.project(), [&](const project::Item& item) {
        last = std::max(last, rpp::number_of(item, group_place));
    });
    set_group(workstation.project(), last + 1.0);
}

void ungroup_items(Workstation& workstation) { set_group(workstation.project(), 0.0); }

void delete_items(Workstation& workstation) {
    for (project::Item* item : workstation.project().selected_items().all())
        item->track().erase_item(*item);
}

void set_time_selection_to_items(Workstation& workstation) {
    const auto items = workstation.project().selected_items().all();
    if (items.empty())
        return;
    project::TimeRange selection{items.front()->position_seconds(), items.front()->end_seconds()};
    for (const project::Item* item : items) {
        selection.start_seconds = std::min(selection.start_seconds, item->position_seconds());
        selection.end_seconds = std::max(selection.end_seconds, item->end_seconds());
    }
    workstation.project().set_time_selection(selection);
}

void move_cursor_to_items(Workstation& workstation) {
    const auto items = workstation.project().selected_items().all();
    const auto first = std::ranges::min_element(items, {}, &project::Item::position_seconds);
    if (first != items.end())
        workstation.project().cursor_seconds = (*first)->position_seconds();
}

void set_snap_offset_to_cursor(Workstation& workstation) {
    const double cursor = workstation.project().cursor_seconds;
    for (project::Item* item : workstation.project().selected_items().all())
        if (cursor >= item->position_seconds() && cursor <= item->end_seconds())
            item->snap_offset_seconds = cursor - item->position_seconds();
}

constexpr Command commands[] = {
    {40006, delete_items},
    {40032, group_items},
    {40033, ungroup_items},
    {40034, select_groups},
    {40182, select_items},
    {40289, unselect_items},
    {40290, set_time_selection_to_items},
    {40421, select_on_selected_tracks},
    {40541, set_snap_offset_to_cursor},
    {40717, select_in_time},
    {40718, select_in_time_on_selected_tracks},
    {40769, unselect_all},
    {41173, move_cursor_to_items},
};

} // namespace

Commands item_commands() { return commands; }

} // namespace headless::workstation
