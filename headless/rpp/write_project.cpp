#include "common/paths.hpp"
#include "headless/rpp/child_order.hpp"
#include "headless/rpp/edit_fields.hpp"
#include "headless/rpp/envelope_kinds.hpp"
#include "headless/rpp/extension_lines.hpp"
#include "headless/rpp/marker_lines.hpp"
#include "headless/rpp/media_source.hpp"
#include "headless/rpp/names.hpp"
#include "headless/rpp/rpp.hpp"
#include "headless/rpp/tempo_lines.hpp"
#include "headless/rpp/time_lines.hpp"
#include "headless/rpp/write_object.hpp"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace headless::rpp {
namespace {

using chunk::Lines;
using chunk::Node;
using chunk::ObjectKind;
using chunk::Text;

class ProjectWriter {
public:
    ProjectWriter(chunk::Output& out, project::Project& project, const std::filesystem::path& folder)
        : out_(out), project_(project), folder_(folder), objects_(out, project, folder) {}

    void write() {
        static const Lines standard = standard_lines(project_forms);
        const project::ProjectSource* source = project_.source.get();
        const Lines& lines = source ? source->document.root.lines : standard;
        if (source && source->document.has_byte_order_mark)
            out_.byte_order_mark();
        if (source)
            copy(source->document.before);
        out_.begin_block(source ? source->document.root.head : Text::literal(own_head));
        write_lines(lines);
        out_.end_block(source ? source->document.root.end : Text::literal(">"));
        if (source)
            copy(source->document.after);
    }

private:
    void copy(const Lines& lines) {
        for (const Node& node : lines)
            out_.copy(node);
    }

    ChildOrder<project::Track> track_order(const Lines& lines) const {
        std::vector<Child<project::Track>> tracks;
        for (const auto& track : project_.tracks())
            tracks.push_back({track.get(), track->serial(), true});
        let_ordered_stay(tracks, lines, ObjectKind::track);
        return {lines, ObjectKind::track, tracks, place_for(lines, project_forms, "TRACK")};
    }

    ChildOrder<project::Marker> marker_order(const Lines& lines) const {
        std::vector<Child<project::Marker>> markers;
        project_.markers.edit([&](project::Marker& marker) {
            markers.push_back({&marker, marker.serial, stays_in_place(marker)});
        });
        return {lines, ObjectKind::marker, markers, place_for(lines, project_forms, "MARKER")};
    }

    InsertedLines missing_lines(const Lines& lines) const {
        InsertedLines inserted;
        const Tokens present = tokens_of(lines);
        add_missing_lines(inserted, lines, present, project_, project_fields(), project_forms);
        add_missing_lines(inserted, lines, present, project_.master(), master_fields(), project_forms);
        if (!chunk::find_line(lines, "RECORD_PATH") && !project_.record_path.empty())
            inserted.emplace(place_for(lines, project_forms, "RECORD_PATH"),
                             record_path_line(Text::literal("RECORD_PATH \"\"")));
        for (const std::string_view token : {"TIMEMODE", "GRID", "SELECTION", "SELECTION2"}) {
            if (token == "SELECTION2" && project_.loop_range() == project_.time_selection())
                continue; // without the line the two are the same
            Text line = Text::made(default_line(project_forms, token));
            edit_time_line(line, project_);
            if (line.content() != default_line(project_forms, token) && !chunk::find_line(lines, token))
                inserted.emplace(place_for(lines, project_forms, token), line);
        }
        return inserted;
    }

    void write_lines(const Lines& lines) {
        const auto tracks = track_order(lines);
        const auto markers = marker_order(lines);
        const InsertedLines inserted = missing_lines(lines);
        const std::size_t none = lines.size() + 1;
        const bool lacks_tempo_map =
            project_.tempo_map.has_new_points() && !project_.tempo_map.points().empty() &&
            std::ranges::none_of(lines, [](const Node& node) { return is_tempo_map(node.token()); });
        const std::size_t tempo_map = lacks_tempo_map ? place_for(lines, project_forms, "TEMPOENVEX") : none;
        const bool lacks_extension_data = !chunk::find_block(lines, "EXTSTATE");
        const std::size_t extension_data =
            lacks_extension_data ? place_for(lines, project_forms, "EXTSTATE") : none;
        const auto write_track = [this](project::Track* track) {
            objects_.write(*track, depth_change(*track));
        };
        const auto write_marker = [this](project::Marker* marker) {
            rpp::write_marker(out_, project_, *marker);
        };
        for (std::size_t i = 0; i <= lines.size(); ++i) {
            for (auto [line, end] = inserted.equal_range(i); line != end; ++line)
                out_.line(line->second);
            if (i == tempo_map)
                write_tempo_map(out_, nullptr, project_.tempo_map);
            if (i == extension_data)
                write_extension_data(out_, nullptr, project_.extension_data);
            markers.before(i, write_marker);
            tracks.before(i, write_track);
            if (i == lines.size())
                break;
            if (const chunk::Place* place = lines[i].place(); place && place->kind != ObjectKind::envelope) {
                markers.at(*place, write_marker);
                tracks.at(*place, write_track);
            } else if (const Text* line = lines[i].line()) {
                out_.line(edited(*line));
            } else if (is_tempo_map(lines[i].token()) && project_.tempo_map.has_new_points()) {
                write_tempo_map(out_, lines[i].block(), project_.tempo_map);
            } else if (lines[i].token() == "EXTSTATE") {
                write_extension_data(out_, lines[i].block(), project_.extension_data);
            } else {
                objects_.write_kept(lines[i], project_.master());
            }
        }
    }

    Text edited(const Text& present) const {
        Text line = present;
        const std::string_view token = chunk::token(line.content());
        if (token == "RECORD_PATH")
            return record_path_line(line);
        if (token == "RENDER_FILE" && is_moved())
            return moved_line(line, 1, project_.source->folder, folder_);
        edit_fields(line, project_, project_fields(), project_forms);
        edit_time_line(line, project_);
        edit_fields(line, project_.master(), master_fields(), project_forms);
        return line;
    }

    Text record_path_line(const Text& present) const {
        Text line = present;
        if (chunk::text_at(line, 1) != project_.record_path.string())
            chunk::set_word(line, 1, chunk::in_quotes(project_.record_path.string()));
        if (is_moved() && chunk::word(line.content(), 2))
            return moved_line(line, 2, project_.source->folder, folder_);
        return line;
    }

    bool is_moved() const { return project_.source && project_.source->folder != folder_; }

    // Once folders have changed, exactly those that are open are closed: readers misinterpret anything else.
    int depth_change(const project::Track& track) {
        if (!project_.has_new_tree())
            return track.folder_depth_change();
        const bool is_last = &track == project_.tracks().back().get();
        const int change = is_last ? -depth_ : std::max(track.folder_depth_change(), -depth_);
        depth_ += change;
        return change;
    }

    chunk::Output& out_;
    project::Project& project_;
    const std::filesystem::path& folder_;
    ObjectWriter objects_;
    int depth_ = 0;
};

std::string_view line_end_of(const project::Project& project) {
    const bool has_carriage_returns =
        project.source && project.source->document.root.head.bytes().ends_with("\r\n");
    return has_carriage_returns ? "\r\n" : "\n";
}

bool fits_in_quotes(const std::string& text) { return chunk::in_quotes(text).substr(1, text.size()) == text; }

// Most paths can be decided as they are; making a path relative to the folder is expensive.
bool path_fits(const std::filesystem::path& file, const std::filesystem::path& folder) {
    return file.empty() || (paths::is_absolute(file) && fits_in_quotes(file.string())) ||
           fits_in_quotes(path_text(file, folder));
}

// Whether the take's source will be copied as it was read.
bool has_source_as_read(const project::Take& take, const project::Project& project,
                        const std::filesystem::path& folder) {
    const chunk::Block* block = chunk::find_block(take.lines, "SOURCE");
    return block && project.source && project.source->folder == folder &&
           plays_same(take.source, read_source(*block, folder));
}

bool has_record_path_as_read(const project::Project& project) {
    const chunk::Text* line =
        project.source ? chunk::find_line(project.source->document.root.lines, "RECORD_PATH") : nullptr;
    return line && chunk::text_at(*line, 1) == project.record_path.string();
}

// Markers share their line with other fields, so they have no form for all quotes.
void note_name(std::vector<ChangedName>& changed, const project::Marker& marker) {
    const Text* line = marker.lines.empty() ? nullptr : marker.lines.front().line();
    if (line && chunk::text_at(*line, 3) == marker.name)
        return;
    const Text written = Text::made("NAME " + chunk::as_word(marker.name));
    if (const std::string_view name = chunk::text_at(written, 1); name != marker.name)
        changed.push_back({(marker.is_region ? "region " : "marker ") + std::to_string(marker.number),
                           marker.name, std::string(name)});
}

void note_name(std::vector<ChangedName>& changed, std::string object, const std::string& name,
               const Lines& lines) {
    const std::string written = chunk::on_one_line(name);
    if (written != name && read_name(lines) != name)
        changed.push_back({std::move(object), name, written});
}

void note_names_on(std::vector<ChangedName>& changed, const project::Track& track) {
    const std::string on_track = "track " + std::to_string(track.index() + 1);
    static const Lines none;
    note_name(changed, on_track, track.name, track.block ? track.block->lines : none);
    for (std::size_t item = 0; item < track.items().size(); ++item) {
        const auto& takes = track.items()[item]->takes();
        for (std::size_t take = 0; take < takes.size(); ++take) {
            note_name(changed,
                      "take " + std::to_string(take + 1) + " of item " + std::to_string(item + 1) + " on " +
                          on_track,
                      takes[take]->name, takes[take]->lines);
        }
    }
}

} // namespace

std::vector<ChangedName> names_that_do_not_fit(const project::Project& project) {
    std::vector<ChangedName> changed;
    for (const project::Marker& marker : project.markers.all())
        note_name(changed, marker);
    for (const auto& track : project.tracks())
        note_names_on(changed, *track);
    return changed;
}

std::vector<std::filesystem::path> paths_that_do_not_fit(const project::Project& project,
                                                         const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> paths;
    if (!fits_in_quotes(project.record_path.string()) && !has_record_path_as_read(project))
        paths.push_back(project.record_path);
    for (const auto& track : project.tracks()) {
        for (const auto& item : track->items()) {
            for (const auto& take : item->takes())
                if (!path_fits(take->source.root().file, folder) &&
                    !has_source_as_read(*take, project, folder))
                    paths.push_back(take->source.root().file);
        }
    }
    return paths;
}

void write_project(project::Project& project, const std::filesystem::path& folder,
                   const chunk::Output::Sink& sink) {
    const auto write = [&](const chunk::Output::Sink& target) {
        chunk::Output out({true, line_end_of(project)}, target);
        ProjectWriter(out, project, folder).write();
        out.flush();
    };
    if (!project.source || !project.source->document.is_cut_off) {
        write(sink);
        return;
    }
    // The ends of blocks that the file lacks are written only together with a change.
    std::string text;
    write([&](std::string_view piece) { text += piece; });
    const std::string_view read = *project.source->text;
    const bool is_unchanged =
        text.starts_with(read) && text.find_first_not_of(" >\r\n", read.size()) == text.npos;
    sink(is_unchanged ? read : text);
}

std::string project_text(project::Project& project, const std::filesystem::path& folder) {
    std::string text;
    write_project(project, folder, [&](std::string_view piece) { text += piece; });
    return text;
}

std::string_view beginning_of_own_projects() { return own_head; }

} // namespace headless::rpp
