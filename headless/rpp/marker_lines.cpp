#include "headless/rpp/marker_lines.hpp"

#include "headless/rpp/fields.hpp"

#include <string>
#include <utility>

namespace headless::rpp {
namespace {

using chunk::Lines;
using chunk::Node;
using chunk::Text;

constexpr int region_flag = 1;
constexpr std::size_t id_word = 8;

int flags_of(const Text& line) { return to_int(chunk::number_at(line, 4, 0.0)); }

bool is_region(const Text& line) { return (flags_of(line) & region_flag) != 0; }

double number_of(Reading& in, const Text& line, std::size_t word) {
    const auto found = chunk::word(line.content(), word);
    const auto number = found ? chunk::number(found->text) : std::nullopt;
    if (found && !number)
        in.fail(line, "'" + std::string(found->text) + "' is no number");
    return number.value_or(0.0);
}

project::Marker read_start(Reading& in, const Text& line) {
    project::Marker marker;
    marker.is_region = is_region(line);
    marker.number = to_int(number_of(in, line, 1));
    marker.position_seconds = number_of(in, line, 2);
    marker.end_seconds = marker.is_region ? marker.position_seconds : 0.0;
    marker.name = chunk::text_at(line, 3);
    marker.color = to_int(number_of(in, line, 5));
    marker.id = chunk::guid_of(chunk::text_at(line, id_word)).value_or(chunk::Guid());
    in.project().guids.pass_over(marker.id);
    return marker;
}

bool is_marker_line(const Node& node) { return node.line() && node.token() == "MARKER"; }

// The index behind the lines of the region that starts at `start`; start + 1 if it never ends.
std::size_t end_of_region(const Lines& lines, std::size_t start) {
    std::size_t end = start + 1;
    while (end < lines.size() && lines[end].token() == "REGIONRENDER")
        ++end;
    const bool ends =
        end < lines.size() && is_marker_line(lines[end]) && is_region(*lines[end].line()) &&
        chunk::number_at(*lines[end].line(), 1, 0.0) == chunk::number_at(*lines[start].line(), 1, 0.0);
    return ends ? end + 1 : start + 1;
}

void edit_number(Text& line, std::size_t word, double value) {
    if (chunk::number_at(line, word, 0.0) != value)
        chunk::set_word(line, word, chunk::decimal(value), "MARKER 0 0 \"\" 0 0 1 R");
}

void edit_start(Text& line, const project::Marker& marker) {
    edit_number(line, 1, marker.number);
    edit_number(line, 2, marker.position_seconds);
    if (chunk::text_at(line, 3) != marker.name)
        chunk::set_word(line, 3, chunk::in_form_of(line, 3, marker.name));
    edit_number(line, 5, marker.color);
    const auto id = chunk::guid_of(chunk::text_at(line, id_word));
    if (marker.id && id != marker.id)
        chunk::set_word(line, id_word, text_of(marker.id), "MARKER 0 0 \"\" 0 0 1 R");
}

void edit_end(Text& line, const project::Marker& marker) {
    edit_number(line, 1, marker.number);
    edit_number(line, 2, marker.end_seconds);
}

project::Track* track_of(const project::Project& project, const chunk::Guid& guid) {
    for (const auto& track : project.tracks())
        if (track->id == guid)
            return track.get();
    return guid ? nullptr : &project.master();
}

// The track that a line of a region's renders names; null if there is none of that identifier.
project::Track* rendered_track(const project::Project& project, const Node& node) {
    const auto guid = node.line() && node.token() == "TRACK" ? chunk::guid_of(chunk::text_at(*node.line(), 1))
                                                             : std::nullopt;
    return guid ? track_of(project, *guid) : nullptr;
}

Text render_line(project::Project& project, const project::RegionRender& render) {
    const bool is_master = render.track == &project.master();
    if (!render.track->id && !is_master)
        render.track->id = project.guids.next();
    std::string line = "TRACK " + text_of(is_master ? chunk::Guid() : render.track->id);
    if (render.channels > 0)
        line += " " + std::to_string(render.channels);
    return Text::made(line);
}

void write_renders(chunk::Output& out, project::Project& project, const project::Marker& marker,
                   const chunk::Block* block) {
    std::vector<project::RegionRender> added = marker.renders;
    out.begin_block(block ? block->head : Text::made("<REGIONRENDER " + std::to_string(marker.number)));
    for (const Node& node : block ? block->lines : Lines()) {
        const project::Track* track = rendered_track(project, node);
        const auto wanted = std::ranges::find(added, track, &project::RegionRender::track);
        if (track && wanted == added.end())
            continue;
        if (track) {
            const int channels = to_int(chunk::number_at(*node.line(), 2, 0.0));
            out.line(channels == wanted->channels ? *node.line() : render_line(project, *wanted));
            added.erase(wanted);
        } else {
            out.copy(node);
        }
    }
    for (const project::RegionRender& render : added)
        out.line(render_line(project, render));
    out.end_block(block ? block->end : Text::literal(">"));
}

void write_new(chunk::Output& out, project::Project& project, const project::Marker& marker) {
    const std::string number = "MARKER " + std::to_string(marker.number) + " ";
    out.line(Text::made(number + chunk::decimal(marker.position_seconds) + " " +
                        chunk::in_quotes(marker.name) + (marker.is_region ? " 1 " : " 0 ") +
                        std::to_string(marker.color) + " 1 R " + text_of(marker.id) + " 0"));
    if (marker.is_region && !marker.renders.empty())
        write_renders(out, project, marker, nullptr);
    if (marker.is_region)
        out.line(Text::made(number + chunk::decimal(marker.end_seconds) + " \"\" 1"));
}

} // namespace

void read_region_renders(project::Project& project) {
    project.markers.edit([&](project::Marker& marker) {
        const chunk::Block* block = chunk::find_block(marker.lines, "REGIONRENDER");
        for (const Node& node : block ? block->lines : Lines())
            if (project::Track* track = rendered_track(project, node))
                marker.renders.push_back({track, to_int(chunk::number_at(*node.line(), 2, 0.0))});
    });
}

void read_markers(Reading& in, Lines& lines) {
    Lines kept;
    for (std::size_t i = 0; i < lines.size();) {
        if (!is_marker_line(lines[i])) {
            kept.push_back(std::move(lines[i++]));
            continue;
        }
        project::Marker marker = read_start(in, *lines[i].line());
        const std::size_t end = marker.is_region ? end_of_region(lines, i) : i + 1;
        if (marker.is_region && end > i + 1)
            marker.end_seconds = number_of(in, *lines[end - 1].line(), 2);
        for (; i < end; ++i)
            marker.lines.push_back(std::move(lines[i]));
        kept.emplace_back(
            chunk::Place{in.project().markers.add_as_read(std::move(marker)), chunk::ObjectKind::marker});
    }
    lines = std::move(kept);
}

void write_marker(chunk::Output& out, project::Project& project, project::Marker& marker) {
    const bool is_of_kind =
        !marker.lines.empty() && is_region(*marker.lines.front().line()) == marker.is_region;
    if (!is_of_kind) {
        if (!marker.id)
            marker.id = project.guids.next();
        write_new(out, project, marker);
        return;
    }
    bool lacks_renders = !marker.renders.empty() && !chunk::find_block(marker.lines, "REGIONRENDER");
    for (std::size_t i = 0; i < marker.lines.size(); ++i) {
        if (const chunk::Block* renders = marker.lines[i].block()) {
            write_renders(out, project, marker, renders);
            continue;
        }
        if (i > 0 && std::exchange(lacks_renders, false))
            write_renders(out, project, marker, nullptr);
        Text line = *marker.lines[i].line();
        if (i == 0)
            edit_start(line, marker);
        else
            edit_end(line, marker);
        out.line(line);
    }
    const bool lacks_end = marker.is_region && marker.lines.size() == 1;
    if (lacks_end && marker.end_seconds != marker.position_seconds)
        out.line(Text::made("MARKER " + std::to_string(marker.number) + " " +
                            chunk::decimal(marker.end_seconds) + " \"\" 1"));
}

bool stays_in_place(const project::Marker& marker) {
    return !marker.lines.empty() &&
           chunk::number_at(*marker.lines.front().line(), 2, 0.0) == marker.position_seconds;
}

} // namespace headless::rpp
