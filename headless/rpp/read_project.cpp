#include "common/path_text.hpp"
#include "headless/rpp/extension_lines.hpp"
#include "headless/rpp/marker_lines.hpp"
#include "headless/rpp/read_fields.hpp"
#include "headless/rpp/rpp.hpp"
#include "headless/rpp/tempo_lines.hpp"
#include "headless/rpp/time_lines.hpp"

#include <string>
#include <utility>

namespace headless::rpp {
namespace {

void read_tracks(Reading& in, chunk::Lines& lines) {
    project::Project& project = in.project();
    for (chunk::Node& node : lines) {
        if (!node.block() || node.token() != "TRACK")
            continue;
        project::Track& track = project.insert_track(project.tracks().size());
        read_track(in, track, std::move(*node.block()));
        node = chunk::Place{track.serial(), chunk::ObjectKind::track};
    }
}

} // namespace

Result<void> parse_project(project::Project& project, std::string text, const std::filesystem::path& folder) {
    auto kept = std::make_shared<const std::string>(std::move(text));
    auto document = chunk::parse_file(*kept);
    if (!document)
        return tl::unexpected(document.error());
    chunk::Block& root = document->root;
    Reading in(project, folder, *kept);
    if (chunk::token(root.head.content()) != "REAPER_PROJECT") {
        in.fail(root.head, "not a project file");
        return tl::unexpected(*in.failure());
    }
    read_fields(in, project, project_fields(), root.lines);
    read_fields(in, project.master(), master_fields(), root.lines);
    read_time_lines(project, root.lines);
    for (const chunk::Node& node : root.lines)
        if (node.block() && is_tempo_map(node.token()))
            read_tempo_map(project.tempo_map, *node.block());
    if (const chunk::Block* block = chunk::find_block(root.lines, "EXTSTATE"))
        read_extension_data(project.extension_data, *block);
    if (const chunk::Text* line = chunk::find_line(root.lines, "RECORD_PATH"))
        project.record_path = path_text::path_of(chunk::text_at(*line, 1));
    read_envelopes(in, project.master(), root.lines);
    read_markers(in, root.lines);
    read_tracks(in, root.lines);
    read_region_renders(project);
    if (in.failure())
        return tl::unexpected(*in.failure());
    project.source = std::make_unique<project::ProjectSource>(
        project::ProjectSource{folder, std::move(kept), std::move(*document)});
    project.set_tree_as_read();
    return {};
}

} // namespace headless::rpp
