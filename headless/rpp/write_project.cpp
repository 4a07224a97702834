#include "headless/rpp/chunk_writer.hpp"
#include "headless/rpp/rpp.hpp"
#include "headless/rpp/words.hpp"

#include <algorithm>

namespace headless::rpp {
namespace {

std::string file_text(const std::filesystem::path& file, const std::filesystem::path& folder) {
    std::error_code ignored; // a path that cannot be made absolute stays as it is
    const auto whole = [&](const std::filesystem::path& path) {
        const auto absolute = std::filesystem::absolute(path, ignored).lexically_normal();
        return ignored ? path : absolute;
    };
    const auto absolute = whole(file);
    const auto relative = absolute.lexically_relative(whole(folder / ""));
    const bool lies_below = !relative.empty() && *relative.begin() != "..";
    return (lies_below ? relative : absolute).generic_string();
}

void write_point(ChunkWriter& out, const project::EnvelopePoint& point) {
    const int shape = static_cast<int>(point.shape);
    if (point.selected || point.tension != 0.0)
        out.line("PT", point.position_seconds, point.value, shape, 0, point.selected, 0, point.tension);
    else
        out.line("PT", point.position_seconds, point.value, shape);
}

void write_envelope(ChunkWriter& out, std::string_view block, const project::Envelope& envelope) {
    const project::EnvelopeProperties& properties = envelope.properties;
    out.open(block);
    out.line("EGUID", Plain{out.next_id()});
    out.line("ACT", properties.active, properties.automation_item_options);
    out.line("VIS", properties.visible, properties.in_lane, 1);
    out.line("LANEHEIGHT", properties.lane_height, 0);
    out.line("ARM", properties.armed);
    out.line("DEFSHAPE", static_cast<int>(properties.default_shape), -1, -1);
    if (properties.fader_scaling)
        out.line("VOLTYPE", 1);
    for (const project::EnvelopePoint& point : envelope.points())
        write_point(out, point);
    out.close();
}

void write_source(ChunkWriter& out, const project::Source& source, const std::filesystem::path& folder) {
    const bool is_word = !source.type.empty() && std::ranges::all_of(source.type, [](unsigned char c) {
        return c > ' ' && c < 0x7F && c != '"' && c != '\'' && c != '`';
    });
    out.open("SOURCE", Plain{is_word ? source.type : in_quotes(source.type)});
    if (!source.file.empty())
        out.line("FILE", file_text(source.file, folder));
    out.close();
}

// The lines that all takes have. Their volumes come before them, since the first take differs there.
void write_take(ChunkWriter& out, const project::Take& take, const std::filesystem::path& folder) {
    out.line("SOFFS", take.start_offset_seconds);
    out.line("PLAYRATE", take.play_rate, take.preserve_pitch, take.pitch_semitones, -1);
    out.line("CHANMODE", take.channel_mode);
    out.line("GUID", Plain{out.next_id()});
    write_source(out, take.source, folder);
    for (const auto& kind : rpp::take_envelopes)
        if (const project::Envelope* envelope = take.envelope(kind.name))
            write_envelope(out, kind.block, *envelope);
}

void write_item(ChunkWriter& out, const project::Item& item, const std::filesystem::path& folder) {
    out.open("ITEM");
    out.line("POSITION", item.position_seconds());
    out.line("SNAPOFFS", item.snap_offset_seconds);
    out.line("LENGTH", item.length_seconds());
    out.line("LOOP", item.loop);
    out.line("ALLTAKES", item.plays_all_takes);
    if (item.color != 0)
        out.line("COLOR", item.color);
    out.line("SEL", item.selected());
    out.line("MUTE", item.mute, 0);
    out.line("IGUID", Plain{out.next_id()});
    if (item.takes().empty())
        out.line("VOLPAN", item.volume, 0, 1, -1);
    for (const auto& take : item.takes()) {
        if (take == item.takes().front()) {
            out.name(take->name);
            out.line("VOLPAN", item.volume, take->pan, take->volume, -1);
        } else {
            const bool is_active = take.get() == item.active_take();
            out.line("TAKE", Plain{is_active ? "SEL" : ""});
            out.name(take->name);
            out.line("TAKEVOLPAN", take->pan, take->volume, -1);
        }
        write_take(out, *take, folder);
    }
    out.close();
}

void write_track(ChunkWriter& out, const project::Track& track, int depth_change,
                 const std::filesystem::path& folder) {
    const std::string id = out.next_id();
    out.open("TRACK", Plain{id});
    out.name(track.name);
    out.line("PEAKCOL", track.color == 0 ? rpp::no_track_color : track.color);
    out.line("VOLPAN", track.volume, track.pan, -1, -1, 1);
    out.line("MUTESOLO", track.mute, track.solo, 0);
    out.line("ISBUS", depth_change == 0 ? 0 : depth_change > 0 ? 1 : 2, depth_change);
    out.line("SEL", track.selected());
    out.line("NCHAN", 2);
    out.line("FX", 1);
    out.line("TRACKID", Plain{id});
    out.line("MAINSEND", 1, 0);
    for (const auto& item : track.items())
        write_item(out, *item, folder);
    out.close();
}

void write_tracks(ChunkWriter& out, const project::Project& project, const std::filesystem::path& folder) {
    int depth = 0;
    for (const auto& track : project.tracks()) {
        const bool is_last = track == project.tracks().back();
        // Closes every open folder, and no folder that was not opened: readers misinterpret anything else.
        const int change = is_last ? -depth : std::max(track->folder_depth_change(), -depth);
        write_track(out, *track, change, folder);
        depth += change;
    }
}

void write_marker(ChunkWriter& out, const project::Marker& marker) {
    out.line("MARKER", marker.number, marker.position_seconds, marker.name, marker.is_region, marker.color, 1,
             Plain{"R"}, Plain{out.next_id()}, 0);
    if (marker.is_region)
        out.line("MARKER", marker.number, marker.end_seconds, "", 1);
}

void write_master(ChunkWriter& out, const project::Track& master) {
    out.line("MASTERPEAKCOL", master.color == 0 ? rpp::no_track_color : master.color);
    out.line("MASTERMUTESOLO", (master.mute ? 1 : 0) + (master.solo != 0 ? 2 : 0));
    out.line("MASTER_VOLUME", master.volume, master.pan, -1, -1, 1);
    out.line("MASTER_SEL", master.selected());
}

// What reads back from a line that holds the text.
std::string as_written(const std::string& text) { return in_quotes(text).substr(1, text.size()); }

bool fits(const std::string& text) { return as_written(text) == text; }

// Most paths can be decided as they are; making a path relative to the folder is expensive.
bool path_fits(const std::filesystem::path& file, const std::filesystem::path& folder) {
    return file.empty() || (file.is_absolute() && fits(file.string())) || fits(file_text(file, folder));
}

// Names of tracks and takes have a form for all quotes; those of markers share their line with other fields.
void note_name(std::vector<ChangedName>& changed, std::string object, const std::string& name) {
    if (const std::string written = on_one_line(name); written != name)
        changed.push_back({std::move(object), name, written});
}

void note_names_on(std::vector<ChangedName>& changed, const project::Track& track) {
    const std::string on_track = "track " + std::to_string(track.index() + 1);
    note_name(changed, on_track, track.name);
    for (std::size_t item = 0; item < track.items().size(); ++item) {
        const auto& takes = track.items()[item]->takes();
        for (std::size_t take = 0; take < takes.size(); ++take) {
            note_name(changed,
                      "take " + std::to_string(take + 1) + " of item " + std::to_string(item + 1) + " on " +
                          on_track,
                      takes[take]->name);
        }
    }
}

} // namespace

std::vector<ChangedName> names_that_do_not_fit(const project::Project& project) {
    std::vector<ChangedName> changed;
    for (const project::Marker& marker : project.markers.all()) {
        if (!fits(marker.name)) {
            changed.push_back({(marker.is_region ? "region " : "marker ") + std::to_string(marker.number),
                               marker.name, as_written(marker.name)});
        }
    }
    for (const auto& track : project.tracks())
        note_names_on(changed, *track);
    return changed;
}

std::vector<std::filesystem::path> paths_that_do_not_fit(const project::Project& project,
                                                         const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> paths;
    if (!fits(project.record_path.string()))
        paths.push_back(project.record_path);
    for (const auto& track : project.tracks()) {
        for (const auto& item : track->items()) {
            for (const auto& take : item->takes())
                if (!path_fits(take->source.file, folder))
                    paths.push_back(take->source.file);
        }
    }
    return paths;
}

std::string project_text(const project::Project& project, const std::filesystem::path& folder) {
    ChunkWriter out;
    out.open(own_beginning.substr(1), 0); // no time of saving: the same project gives the same bytes
    out.line("RIPPLE", 0);
    out.line("PANLAW", 1);
    out.line("TIMEMODE", 1, 5, -1, project.frame_rate, project.drop_frame, 0, -1);
    out.line("CURSOR", project.cursor_seconds);
    out.line("RECORD_PATH", project.record_path.string(), "");
    out.line("SAMPLERATE", project.sample_rate, 0, 0);
    out.line("TEMPO", project.tempo_bpm, project.meter_numerator, project.meter_denominator);
    for (const project::Marker& marker : project.markers.all())
        write_marker(out, marker);
    write_master(out, project.master());
    write_tracks(out, project, folder);
    out.close();
    return out.take_text();
}

} // namespace headless::rpp
