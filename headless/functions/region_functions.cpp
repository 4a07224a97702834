// Host functions that find markers and regions, go to them, and say which tracks are rendered for a region.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

#include <algorithm>
#include <cstddef>
#include <optional>

namespace headless::functions {
namespace {

// -1 where there is none. Of regions that overlap, the last to begin counts.
void find_markers(const project::Project& project, double seconds, int* marker_index, int* region_index) {
    put(marker_index, -1);
    put(region_index, -1);
    const auto& all = project.markers.all();
    for (std::size_t i = 0; i < all.size() && all[i].position_seconds <= seconds; ++i)
        if (!all[i].is_region)
            put(marker_index, static_cast<int>(i));
        else if (seconds < all[i].end_seconds)
            put(region_index, static_cast<int>(i));
}

// By place, both are counted from 1.
const project::Marker* marker_to_go_to(const project::Project& project, bool is_region, int number,
                                       bool by_place) {
    if (!by_place)
        return project.markers.find(is_region, number);
    int place = 0;
    for (const project::Marker& marker : project.markers.all())
        if (marker.is_region == is_region && ++place == number)
            return &marker;
    return nullptr;
}

template <bool is_region>
void go_to(project::Project& project, int number, bool by_place) {
    if (const project::Marker* marker = marker_to_go_to(project, is_region, number, by_place))
        project.cursor_seconds = std::max(marker->position_seconds, 0.0);
}

// A flag above 0 adds the track, 2 with one channel, 4 with two and so on; one below 0 removes it.
void set_region_render(project::Project& project, int region, project::Track& track, int flag) {
    if (flag != 0)
        project.markers.set_render(region, track, flag > 0 ? std::optional(flag / 2) : std::nullopt);
}

project::Track* get_region_render(const project::Project& project, int region, int index) {
    const project::Marker* marker = project.markers.find(true, region);
    const auto place = static_cast<std::size_t>(index);
    return marker && place < marker->renders.size() ? marker->renders[place].track : nullptr;
}

} // namespace

std::span<const workstation::HostFunction> region_functions() {
    static const workstation::HostFunction table[] = {
        {"GetLastMarkerAndCurRegion",
         host_function<find_markers>("proj,time,markeridxOut,regionidxOut",
                                     "The last marker at or before the time and the region around it, by "
                                     "index; -1 for none")},
        {"GoToMarker", host_function<go_to<false>>("proj,marker_index,use_timeline_order",
                                                   "Moves the edit cursor to the marker of that number, or "
                                                   "of that place, counted from 1")},
        {"GoToRegion", host_function<go_to<true>>("proj,region_index,use_timeline_order",
                                                  "Moves the edit cursor to the region of that number, or of "
                                                  "that place, counted from 1")},
        {"SetRegionRenderMatrix",
         host_function<set_region_render>("proj,regionindex,addtrack,flag",
                                          "Renders the track for the region of that number, or no longer if "
                                          "flag is below 0; flag 2 one channel, 4 two, ...")},
        {"EnumRegionRenderMatrix", host_function<get_region_render>(
                                       "proj,regionindex,rendertrack",
                                       "A track that is rendered for the region of that number, by index")},
    };
    return table;
}

} // namespace headless::functions
