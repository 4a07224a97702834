#include "headless/rpp/take_markers.hpp"

#include "headless/rpp/fields.hpp"
#include "headless/rpp/properties.hpp"

#include <algorithm>
#include <string_view>

namespace headless::rpp {
namespace {

// "TKM pos name color [length]"
constexpr std::string_view token = "TKM";

bool is_marker(const chunk::Node& node) { return node.line() && node.token() == token; }

double position_of(const chunk::Node& node) { return chunk::number_at(*node.line(), 1, 0.0); }

// The markers' indices among the take's lines, in the order of positions.
std::vector<std::size_t> places_of(const project::Take& take) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < take.lines.size(); ++i)
        if (is_marker(take.lines[i]))
            places.push_back(i);
    std::ranges::stable_sort(places, {}, [&](std::size_t place) { return position_of(take.lines[place]); });
    return places;
}

std::optional<std::size_t> place_of(const project::Take& take, std::size_t index) {
    const auto places = places_of(take);
    return index < places.size() ? std::optional(places[index]) : std::nullopt;
}

// Inserts the line before the first one of a later marker. Returns the marker's index.
std::size_t insert_line(project::Take& take, chunk::Node line) {
    const double position = position_of(line);
    const auto places = places_of(take);
    const auto later = std::ranges::find_if(
        places, [&](std::size_t place) { return position_of(take.lines[place]) > position; });
    if (later == places.end())
        insert(take, std::move(line));
    else
        take.lines.insert(take.lines.begin() + static_cast<std::ptrdiff_t>(*later), std::move(line));
    return static_cast<std::size_t>(later - places.begin());
}

chunk::Node taken_out(project::Take& take, std::size_t place) {
    const auto found = take.lines.begin() + static_cast<std::ptrdiff_t>(place);
    chunk::Node line = std::move(*found);
    take.lines.erase(found);
    return line;
}

} // namespace

std::vector<TakeMarker> take_markers(const project::Take& take) {
    std::vector<TakeMarker> markers;
    for (const std::size_t place : places_of(take)) {
        const chunk::Text& line = *take.lines[place].line();
        markers.push_back({position_of(take.lines[place]), std::string(chunk::text_at(line, 2)),
                           to_int(chunk::number_at(line, 3, 0.0))});
    }
    return markers;
}

std::size_t add_take_marker(project::Take& take, const TakeMarker& marker) {
    std::string line(token);
    line.append(" ").append(chunk::decimal(marker.position_seconds));
    line.append(" ").append(chunk::as_word(marker.name)).append(" ").append(std::to_string(marker.color));
    return insert_line(take, chunk::Text::made(line));
}

std::optional<std::size_t> change_take_marker(project::Take& take, std::size_t index,
                                              const TakeMarkerChange& change) {
    const auto place = place_of(take, index);
    if (!place)
        return std::nullopt;
    chunk::Text& line = *take.lines[*place].line();
    if (change.name && *change.name != chunk::text_at(line, 2))
        chunk::set_word(line, 2, chunk::as_word(*change.name));
    if (change.color && *change.color != to_int(chunk::number_at(line, 3, 0.0)))
        chunk::set_word(line, 3, std::to_string(*change.color));
    if (!change.position_seconds || *change.position_seconds == chunk::number_at(line, 1, 0.0))
        return index;
    chunk::set_word(line, 1, chunk::decimal(*change.position_seconds));
    const auto places = places_of(take);
    if (std::ranges::is_sorted(places))
        return static_cast<std::size_t>(std::ranges::find(places, *place) - places.begin());
    return insert_line(take, taken_out(take, *place));
}

bool erase_take_marker(project::Take& take, std::size_t index) {
    const auto place = place_of(take, index);
    if (place)
        taken_out(take, *place);
    return place.has_value();
}

void cut_take_markers(project::Take& take, double from_seconds, double to_seconds) {
    std::erase_if(take.lines, [&](const chunk::Node& node) {
        return is_marker(node) && !(position_of(node) >= from_seconds && position_of(node) < to_seconds);
    });
}

} // namespace headless::rpp
