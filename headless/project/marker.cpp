#include "headless/project/marker.hpp"

#include <algorithm>
#include <tuple>
#include <utility>

namespace headless::project {
namespace {

auto visible_values(const Marker& marker) {
    return std::tie(marker.is_region, marker.position_seconds, marker.end_seconds, marker.name, marker.number,
                    marker.color);
}

} // namespace

bool Marker::operator==(const Marker& other) const { return visible_values(*this) == visible_values(other); }

std::size_t MarkerList::region_count() const {
    return static_cast<std::size_t>(std::ranges::count_if(markers_, &Marker::is_region));
}

int MarkerList::add(Marker marker) {
    const bool is_taken = marker.is_region && find(true, marker.number) != nullptr;
    if (marker.number < 0 || is_taken)
        marker.number = lowest_free_number(marker.is_region);
    const int number = marker.number;
    insert(std::move(marker));
    return number;
}

std::uint64_t MarkerList::add_as_read(Marker marker) { return insert(std::move(marker)); }

bool MarkerList::replace(Marker marker) {
    const Marker* present = find(marker.is_region, marker.number);
    if (!present)
        return false;
    return replace(static_cast<std::size_t>(present - markers_.data()), std::move(marker));
}

bool MarkerList::replace(std::size_t index, Marker marker, bool sorts) {
    if (index >= markers_.size())
        return false;
    const Marker* namesake = marker.is_region ? find(true, marker.number) : nullptr;
    if (namesake && namesake != &markers_[index])
        return false;
    const auto place = markers_.begin() + static_cast<std::ptrdiff_t>(index);
    marker.serial = place->serial;
    marker.id = place->id;
    marker.lines = std::move(place->lines);
    if (!sorts || place->position_seconds == marker.position_seconds) {
        *place = std::move(marker);
        return true;
    }
    markers_.erase(place);
    insert(std::move(marker));
    return true;
}

void MarkerList::sort() { std::ranges::stable_sort(markers_, {}, &Marker::position_seconds); }

bool MarkerList::set_render(int number, Track& track, std::optional<int> channels) {
    const Marker* found = find(true, number);
    if (!found)
        return false;
    auto& renders = markers_[static_cast<std::size_t>(found - markers_.data())].renders;
    const auto render = std::ranges::find(renders, &track, &RegionRender::track);
    if (!channels)
        std::erase_if(renders, [&](const RegionRender& one) { return one.track == &track; });
    else if (render == renders.end())
        renders.push_back({&track, *channels});
    else
        render->channels = *channels;
    return true;
}

void MarkerList::erase_renders(const Track& track) {
    for (Marker& marker : markers_)
        std::erase_if(marker.renders, [&](const RegionRender& render) { return render.track == &track; });
}

const Marker* MarkerList::find(bool is_region, int number) const {
    const auto found = std::ranges::find_if(markers_, [&](const Marker& marker) {
        return marker.is_region == is_region && marker.number == number;
    });
    return found == markers_.end() ? nullptr : &*found;
}

bool MarkerList::erase(std::size_t index) {
    if (index >= markers_.size())
        return false;
    markers_.erase(markers_.begin() + static_cast<std::ptrdiff_t>(index));
    return true;
}

std::uint64_t MarkerList::insert(Marker marker) {
    if (marker.serial == 0)
        marker.serial = ++last_serial_;
    const std::uint64_t serial = marker.serial;
    const auto place =
        std::ranges::upper_bound(markers_, marker.position_seconds, {}, &Marker::position_seconds);
    markers_.insert(place, std::move(marker));
    return serial;
}

int MarkerList::lowest_free_number(bool is_region) const {
    std::vector<bool> taken(markers_.size() + 2, false);
    for (const Marker& marker : markers_)
        if (marker.is_region == is_region && static_cast<std::size_t>(marker.number) < taken.size())
            taken[static_cast<std::size_t>(marker.number)] = true;
    return static_cast<int>(std::find(taken.begin() + 1, taken.end(), false) - taken.begin());
}

} // namespace headless::project
