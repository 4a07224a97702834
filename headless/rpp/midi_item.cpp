#include "headless/rpp/midi_item.hpp"

#include "headless/rpp/properties.hpp"

#include <algorithm>
#include <cmath>
#include <string>

namespace headless::rpp {
namespace {

constexpr double ticks_a_quarter_note = 960.0;

chunk::Text identifier(std::string token, project::Project& project) {
    return chunk::Text::made(token.append(" ").append(text_of(project.guids.next())));
}

// The source ends with its last event, which ends all notes.
chunk::Block empty_midi_source(project::Project& project, double quarter_notes) {
    const auto ticks = std::to_string(std::llround(std::min(quarter_notes * ticks_a_quarter_note, 2e9)));
    chunk::Block source{chunk::Text::literal("<SOURCE MIDI"), {}};
    source.lines.emplace_back(chunk::Text::literal("HASDATA 1 960 QN"));
    source.lines.emplace_back(chunk::Text::literal("CCINTERP 32"));
    source.lines.emplace_back(identifier("POOLEDEVTS", project));
    source.lines.emplace_back(chunk::Text::made("E " + ticks + " b0 7b 00"));
    source.lines.emplace_back(chunk::Text::literal("CCINTERP 32"));
    source.lines.emplace_back(identifier("GUID", project));
    source.lines.emplace_back(chunk::Text::literal("IGNTEMPO 0 120 4 4"));
    source.lines.emplace_back(chunk::Text::literal("SRCCOLOR 0"));
    source.lines.emplace_back(chunk::Text::literal("VELLANE -1 100 0"));
    return source;
}

} // namespace

project::Item& add_midi_item(project::Track& track, double start_seconds, double end_seconds) {
    const double start = std::max(start_seconds, 0.0);
    project::Item& item = track.add_item(start, std::max(end_seconds - start, 0.0));
    item.loop = true; // as the workstation makes them
    project::Take& take = item.add_take(project::Source{.file = {}, .type = "MIDI"}, "");
    give_lines(take);
    const project::TempoMap& map = track.project().tempo_map;
    const double quarter_notes = map.quarters_at(item.end_seconds()) - map.quarters_at(start);
    insert(take, empty_midi_source(track.project(), quarter_notes));
    return item;
}

} // namespace headless::rpp
