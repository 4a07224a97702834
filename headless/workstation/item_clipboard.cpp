#include "headless/workstation/item_clipboard.hpp"

#include "headless/rpp/copies.hpp"
#include "headless/rpp/properties.hpp"
#include "headless/rpp/state.hpp"

#include <algorithm>
#include <map>

namespace headless::workstation {
namespace {

constexpr rpp::FieldPlace group_place{"GROUP", 1};

double last_group(const project::Project& project) {
    double last = 0.0;
    for (const auto& track : project.tracks())
        for (const auto& item : track->items())
            last = std::max(last, rpp::number_of(*item, group_place));
    return last;
}

} // namespace

void ItemClipboard::copy_selected(project::Project& project) {
    const auto items = project.selected_items().all(); // in the order of tracks
    if (items.empty())
        return;
    const double start =
        (*std::ranges::min_element(items, {}, &project::Item::position_seconds))->position_seconds();
    const std::size_t first_track = items.front()->track().index();
    items_.clear();
    for (project::Item* item : items)
        items_.push_back(
            {rpp::state_of(*item), item->track().index() - first_track, item->position_seconds() - start});
}

double ItemClipboard::paste(project::Project& project, std::size_t first_track, double at_seconds) const {
    project.select_all_items(false);
    std::map<double, double> new_groups;
    double next_group = last_group(project) + 1.0;
    double end = at_seconds;
    for (const CopiedItem& copied : items_) {
        const std::size_t index = first_track + copied.track;
        while (index >= project.tracks().size())
            project.insert_track(project.tracks().size());
        project::Item* item = rpp::add_item(*project.track(index), copied.state);
        if (!item)
            continue;
        item->set_position_seconds(at_seconds + copied.position_seconds);
        item->set_selected(true);
        end = std::max(end, item->end_seconds());
        if (const double group = rpp::number_of(*item, group_place); group != 0.0) {
            const auto [place, is_new] = new_groups.emplace(group, next_group);
            next_group += is_new ? 1.0 : 0.0;
            rpp::set_number(*item, group_place, place->second);
        }
    }
    return end;
}

} // namespace headless::workstation
