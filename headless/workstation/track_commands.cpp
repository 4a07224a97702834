#include "headless/workstation/track_commands.hpp"

#include "headless/rpp/track_copies.hpp"
#include "headless/workstation/command_tables.hpp"
#include "headless/workstation/transport.hpp"
#include "headless/workstation/workstation.hpp"

#include <algorithm>

namespace headless::workstation {
namespace {

using project::Project;
using project::Track;

void unselect_tracks(Workstation& workstation) {
    Project& project = workstation.project();
    const auto& selected = project.selected_tracks();
    while (selected.size() > 0)
        selected.at(selected.size() - 1)->set_selected(false);
    project.master().set_selected(false);
}

void select_all_tracks(Workstation& workstation) {
    for (const auto& track : workstation.project().tracks())
        track->set_selected(true);
}

void unsolo_all(Workstation& workstation) {
    for (const auto& track : workstation.project().tracks())
        track->solo = 0;
    workstation.project().master().solo = 0;
}

void unmute_all(Workstation& workstation) {
    for (const auto& track : workstation.project().tracks())
        track->mute = false;
}

// Selects the track that is `step` after the last touched one or, if there is none, after the first selected.
void select_neighbour(Workstation& workstation, int step) {
    Project& project = workstation.project();
    const int count = static_cast<int>(project.tracks().size());
    const Track* from = workstation.track_session.last_touched(project);
    if (!from || from == &project.master())
        from = project.selected_tracks().at(0);
    const int wanted = from ? static_cast<int>(from->index()) + step : 0;
    if (count > 0)
        select_only(workstation, project.track(static_cast<std::size_t>(std::clamp(wanted, 0, count - 1))));
}

void select_next(Workstation& workstation) { select_neighbour(workstation, 1); }
void select_previous(Workstation& workstation) { select_neighbour(workstation, -1); }

void touch_first_selected(Workstation& workstation) {
    if (const Track* track = workstation.project().selected_tracks().at(0))
        workstation.track_session.touch(*track);
}

void insert_track(Workstation& workstation) {
    Project& project = workstation.project();
    const Track* last = workstation.track_session.last_touched(project);
    const bool is_at_end = !last || last == &project.master();
    select_only(workstation, &project.insert_track(is_at_end ? project.tracks().size() : last->index() + 1));
}

void remove_tracks(Workstation& workstation) {
    for (Track* track : workstation.project().selected_tracks().all())
        workstation.project().erase_track(*track);
}

void duplicate_tracks(Workstation& workstation) {
    Project& project = workstation.project();
    const auto copies = rpp::copy_tracks(project, project.selected_tracks().all());
    if (copies.empty())
        return;
    unselect_tracks(workstation);
    for (Track* copy : copies)
        copy->set_selected(true);
    workstation.track_session.touch(*copies.front());
}

void start(Workstation& workstation) { play(workstation.project()); }

void halt(Workstation& workstation) { stop(workstation.project()); }

void record_nothing(Workstation&) {} // there is no input

void save(Workstation& workstation) {
    const Result<void> saved = workstation.save_project
                                   ? workstation.save_project()
                                   : tl::unexpected(Failure{"the project cannot be saved by a command here"});
    if (!saved)
        workstation.report(saved.error());
}

void remove_time_selection(Workstation& workstation) { workstation.project().set_time_selection({}); }

void clear_marked_areas(Workstation& workstation) { workstation.track_session.marked_areas.clear(); }

constexpr Command commands[] = {
    {1007, start},
    {1013, record_nothing},
    {1016, halt},
    {40001, insert_track},
    {40005, remove_tracks},
    {40026, save},
    {40062, duplicate_tracks},
    {40285, select_next},
    {40286, select_previous},
    {40296, select_all_tracks},
    {40297, unselect_tracks},
    {40339, unmute_all},
    {40340, unsolo_all},
    {40635, remove_time_selection},
    {40914, touch_first_selected},
    {42406, clear_marked_areas},
};

} // namespace

void select_only(Workstation& workstation, Track* track) {
    unselect_tracks(workstation);
    if (!track)
        return;
    track->set_selected(true);
    workstation.track_session.touch(*track);
}

Commands track_commands() { return commands; }

} // namespace headless::workstation
