// Host functions about what the track panel and the mixer would show.

#include "headless/functions/adapter.hpp"
#include "headless/functions/attributes.hpp"
#include "headless/functions/tables.hpp"
#include "headless/functions/track_names.hpp"
#include "headless/rpp/properties.hpp"

#include <algorithm>

namespace headless::functions {
namespace {

// Bits of the master's visibility.
constexpr int shown_in_panel = 1;
constexpr int hidden_in_mixer = 2;

bool is_shown_in_mixer(const project::Track& track) {
    if (is_master(track))
        return (to_int(rpp::number_of(track, {"MASTERTRACKVIEW", 1})) & hidden_in_mixer) == 0;
    return rpp::number_of(track, {"SHOWINMIX", 1}) != 0.0;
}

bool is_shown_in_panel(const project::Track& track) {
    if (is_master(track))
        return (to_int(rpp::number_of(track, {"MASTERTRACKVIEW", 1})) & shown_in_panel) != 0;
    return rpp::number_of(track, {"SHOWINMIX", 4}) != 0.0;
}

bool is_track_visible(const project::Track& track, bool in_mixer) {
    return in_mixer ? is_shown_in_mixer(track) : is_shown_in_panel(track);
}

int get_master_visibility(Workstation& workstation) {
    return to_int(rpp::number_of(workstation.project(), {"MASTERTRACKVIEW", 1})) &
           (shown_in_panel | hidden_in_mixer);
}

int set_master_visibility(Workstation& workstation, int flags) {
    const int before = get_master_visibility(workstation);
    const int others = to_int(rpp::number_of(workstation.project(), {"MASTERTRACKVIEW", 1})) &
                       ~(shown_in_panel | hidden_in_mixer);
    rpp::set_number(workstation.project(), {"MASTERTRACKVIEW", 1},
                    others | (flags & (shown_in_panel | hidden_in_mixer)));
    return before;
}

project::Track* track_from_id(Workstation& workstation, int id, bool of_mixer) {
    const project::Project& project = workstation.project();
    if (id <= 0)
        return id == 0 ? &project.master() : nullptr;
    for (const auto& track : project.tracks())
        if ((!of_mixer || is_shown_in_mixer(*track)) && --id == 0)
            return track.get();
    return nullptr;
}

int track_to_id(const project::Track& track, bool of_mixer) {
    if (is_master(track))
        return 0;
    if (of_mixer && !is_shown_in_mixer(track))
        return -1;
    int id = 0;
    for (const auto& other : track.project().tracks()) {
        id += !of_mixer || is_shown_in_mixer(*other) ? 1 : 0;
        if (other.get() == &track)
            break;
    }
    return id;
}

int count_shown_tracks(Workstation& workstation, bool of_mixer) {
    const auto& tracks = workstation.project().tracks();
    return static_cast<int>(std::ranges::count_if(
        tracks, [&](const auto& track) { return !of_mixer || is_shown_in_mixer(*track); }));
}

} // namespace

std::span<const workstation::HostFunction> track_visibility_functions() {
    static const workstation::HostFunction table[] = {
        {"IsTrackVisible", host_function<is_track_visible>(
                               "track,mixer", "Whether the mixer or the track panel shows the track")},
        {"GetMasterTrackVisibility",
         host_function<get_master_visibility>("", "1 shown in the track panel + 2 not shown in the mixer")},
        {"SetMasterTrackVisibility",
         host_function<set_master_visibility>(
             "flag", "Sets what GetMasterTrackVisibility gives; returns what was set before")},
        {"CSurf_TrackFromID",
         host_function<track_from_id>("idx,mcpView", "The track of that number; 0 is the master")},
        {"CSurf_TrackToID",
         host_function<track_to_id>("track,mcpView", "The track's number; 0 for the master")},
        {"CSurf_NumTracks",
         host_function<count_shown_tracks>("mcpView", "Number of tracks, or of those in the mixer")},
    };
    return table;
}

} // namespace headless::functions
