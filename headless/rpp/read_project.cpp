#include "common/native_color.hpp"
#include "headless/rpp/chunk_reader.hpp"
#include "headless/rpp/rpp.hpp"
#include "headless/rpp/words.hpp"

#include <algorithm>
#include <optional>
#include <utility>

namespace headless::rpp {
namespace {

/// The effect of the line of that name on a T.
template <class T>
struct Rule {
    std::string_view name;
    void (*read)(ChunkReader& in, T& target);
};

// Reads the block that begins at the current line. Lines without a rule are skipped.
template <class T, std::size_t count>
void read_block(ChunkReader& in, T& target, const Rule<T> (&rules)[count]) {
    in.enter();
    while (in.next()) {
        const auto rule = std::ranges::find(rules, in.name(), &Rule<T>::name);
        if (rule != std::end(rules))
            rule->read(in, target);
    }
}

// A name that its line cannot hold follows in a block of the same name, after a bar.
void read_name(ChunkReader& in, std::string& name) {
    if (!in.begins_block()) {
        name = in.text(0);
        return;
    }
    in.enter();
    for (bool is_first = true; in.next();) {
        if (in.line().starts_with('|')) {
            name = is_first ? "" : std::move(name) + '\n';
            name += in.line().substr(1);
            is_first = false;
        }
    }
}

struct EnvelopeInProgress {
    project::EnvelopeProperties properties;
    std::vector<project::EnvelopePoint> points;
};

constexpr Rule<EnvelopeInProgress> envelope_rules[] = {
    {"ACT",
     [](ChunkReader& in, EnvelopeInProgress& envelope) {
         envelope.properties.active = in.flag(0, true);
         envelope.properties.automation_item_options = in.integer(1, -1);
     }},
    {"VIS",
     [](ChunkReader& in, EnvelopeInProgress& envelope) {
         envelope.properties.visible = in.flag(0, true);
         envelope.properties.in_lane = in.flag(1, true);
     }},
    {"LANEHEIGHT", [](ChunkReader& in,
                      EnvelopeInProgress& envelope) { envelope.properties.lane_height = in.integer(0, 0); }},
    {"ARM",
     [](ChunkReader& in, EnvelopeInProgress& envelope) { envelope.properties.armed = in.flag(0, false); }},
    {"DEFSHAPE",
     [](ChunkReader& in, EnvelopeInProgress& envelope) {
         envelope.properties.default_shape = project::point_shape(in.integer(0, 0));
     }},
    {"VOLTYPE", [](ChunkReader& in,
                   EnvelopeInProgress& envelope) { envelope.properties.fader_scaling = in.flag(0, false); }},
    {"PT",
     [](ChunkReader& in, EnvelopeInProgress& envelope) {
         envelope.points.push_back({in.number(0, 0.0), in.number(1, 1.0),
                                    project::point_shape(in.integer(2, 0)), in.flag(4, false),
                                    in.number(6, 0.0)});
     }},
};

void read_envelope(ChunkReader& in, project::Envelope& envelope) {
    EnvelopeInProgress read;
    read_block(in, read, envelope_rules);
    envelope.properties = read.properties;
    envelope.set_points(std::move(read.points));
}

struct SourceInProgress {
    project::Source& source;
    const std::filesystem::path& folder;
};

constexpr Rule<SourceInProgress> source_rules[] = {
    {"FILE",
     [](ChunkReader& in, SourceInProgress& target) {
         target.source.file = (target.folder / in.text(0)).lexically_normal();
     }},
};

struct ItemInProgress {
    project::Track& track;
    const std::filesystem::path& folder;
    double position_seconds = 0.0;
    project::Item* made_item = nullptr;
    project::Take* present_take = nullptr;
    double first_take_pan = 0.0; // these two are in the line of the item's volume
    double first_take_volume = 1.0;

    // Created at the first line that needs it, so that it already has its position.
    project::Item& item() {
        if (!made_item)
            made_item = &track.add_item(position_seconds, 0.0);
        return *made_item;
    }

    // The first take begins at the first of its lines. Each further take begins with a line of its own.
    project::Take& take() {
        if (!present_take) {
            begin_take();
            present_take->pan = first_take_pan;
            present_take->volume = first_take_volume;
        }
        return *present_take;
    }

    void begin_take() { present_take = &item().add_take(project::Source{.file = {}, .type = "EMPTY"}, ""); }
};

template <std::size_t kind>
void read_take_envelope(ChunkReader& in, ItemInProgress& target) {
    read_envelope(in, target.take().add_envelope(std::string(rpp::take_envelopes[kind].name)));
}

constexpr Rule<ItemInProgress> item_rules[] = {
    {"POSITION",
     [](ChunkReader& in, ItemInProgress& target) {
         target.position_seconds = in.number(0, 0.0);
         target.item().set_position_seconds(target.position_seconds);
     }},
    {"SNAPOFFS",
     [](ChunkReader& in, ItemInProgress& target) { target.item().snap_offset_seconds = in.number(0, 0.0); }},
    {"LENGTH",
     [](ChunkReader& in, ItemInProgress& target) { target.item().set_length_seconds(in.number(0, 0.0)); }},
    {"LOOP", [](ChunkReader& in, ItemInProgress& target) { target.item().loop = in.flag(0, false); }},
    {"ALLTAKES",
     [](ChunkReader& in, ItemInProgress& target) { target.item().plays_all_takes = in.flag(0, false); }},
    {"COLOR", [](ChunkReader& in, ItemInProgress& target) { target.item().color = in.integer(0, 0); }},
    {"SEL", [](ChunkReader& in, ItemInProgress& target) { target.item().set_selected(in.flag(0, false)); }},
    {"MUTE", [](ChunkReader& in, ItemInProgress& target) { target.item().mute = in.flag(0, false); }},
    {"VOLPAN",
     [](ChunkReader& in, ItemInProgress& target) {
         target.item().volume = in.number(0, 1.0);
         target.first_take_pan = in.number(1, 0.0);
         target.first_take_volume = in.number(2, 1.0);
         if (target.present_take && target.item().takes().size() == 1) {
             target.present_take->pan = target.first_take_pan;
             target.present_take->volume = target.first_take_volume;
         }
     }},
    {"TAKE",
     [](ChunkReader& in, ItemInProgress& target) {
         if (in.text(0) != "NULL") // an empty lane
             target.begin_take();
         if (in.text(0) == "SEL")
             target.item().set_active_take(*target.present_take);
     }},
    {"NAME", [](ChunkReader& in, ItemInProgress& target) { read_name(in, target.take().name); }},
    {"TAKEVOLPAN",
     [](ChunkReader& in, ItemInProgress& target) {
         target.take().pan = in.number(0, 0.0);
         target.take().volume = in.number(1, 1.0);
     }},
    {"SOFFS",
     [](ChunkReader& in, ItemInProgress& target) { target.take().start_offset_seconds = in.number(0, 0.0); }},
    {"PLAYRATE",
     [](ChunkReader& in, ItemInProgress& target) {
         target.take().play_rate = in.number(0, 1.0);
         target.take().preserve_pitch = in.flag(1, true);
         target.take().pitch_semitones = in.number(2, 0.0);
     }},
    {"CHANMODE",
     [](ChunkReader& in, ItemInProgress& target) { target.take().channel_mode = in.integer(0, 0); }},
    {"SOURCE",
     [](ChunkReader& in, ItemInProgress& target) {
         SourceInProgress source{target.take().source, target.folder};
         source.source.type = in.text(0);
         read_block(in, source, source_rules);
     }},
    {rpp::take_envelopes[0].block, read_take_envelope<0>},
    {rpp::take_envelopes[1].block, read_take_envelope<1>},
    {rpp::take_envelopes[2].block, read_take_envelope<2>},
    {rpp::take_envelopes[3].block, read_take_envelope<3>},
};

struct TrackInProgress {
    project::Track& track;
    const std::filesystem::path& folder;
};

int track_color(ChunkReader& in) { return used_color(in.integer(0, rpp::no_track_color)); }

constexpr Rule<TrackInProgress> track_rules[] = {
    {"NAME", [](ChunkReader& in, TrackInProgress& target) { read_name(in, target.track.name); }},
    {"PEAKCOL", [](ChunkReader& in, TrackInProgress& target) { target.track.color = track_color(in); }},
    {"VOLPAN",
     [](ChunkReader& in, TrackInProgress& target) {
         target.track.volume = in.number(0, 1.0);
         target.track.pan = in.number(1, 0.0);
     }},
    {"MUTESOLO",
     [](ChunkReader& in, TrackInProgress& target) {
         target.track.mute = in.flag(0, false);
         target.track.solo = in.integer(1, 0);
     }},
    {"ISBUS", [](ChunkReader& in,
                 TrackInProgress& target) { target.track.set_folder_depth_change(in.integer(1, 0)); }},
    {"SEL", [](ChunkReader& in, TrackInProgress& target) { target.track.set_selected(in.flag(0, false)); }},
    {"ITEM",
     [](ChunkReader& in, TrackInProgress& target) {
         ItemInProgress item{target.track, target.folder};
         read_block(in, item, item_rules);
         item.item();
     }},
};

struct ProjectInProgress {
    project::Project& project;
    const std::filesystem::path& folder;
    std::optional<project::Marker> open_region; // its end is in the next line
};

void close_region(ProjectInProgress& target) {
    if (target.open_region)
        target.project.markers.add(*std::exchange(target.open_region, std::nullopt));
}

void read_marker(ChunkReader& in, ProjectInProgress& target) {
    const int number = in.integer(0, 0);
    const double position = in.number(1, 0.0);
    const bool is_region = (in.integer(3, 0) & 1) != 0; // the other bits concern display
    if (is_region && target.open_region && target.open_region->number == number) {
        target.open_region->end_seconds = position;
        close_region(target);
        return;
    }
    close_region(target);
    const project::Marker marker{is_region,  position, is_region ? position : 0.0,
                                 in.text(2), number,   in.integer(4, 0)};
    if (is_region)
        target.open_region = marker;
    else
        target.project.markers.add(marker);
}

constexpr Rule<ProjectInProgress> project_rules[] = {
    {"TIMEMODE",
     [](ChunkReader& in, ProjectInProgress& target) {
         target.project.frame_rate = in.number(3, target.project.frame_rate);
         target.project.drop_frame = in.flag(4, false);
     }},
    {"CURSOR",
     [](ChunkReader& in, ProjectInProgress& target) { target.project.cursor_seconds = in.number(0, 0.0); }},
    {"RECORD_PATH",
     [](ChunkReader& in, ProjectInProgress& target) { target.project.record_path = in.text(0); }},
    {"SAMPLERATE",
     [](ChunkReader& in, ProjectInProgress& target) {
         target.project.sample_rate = in.integer(0, target.project.sample_rate);
     }},
    {"TEMPO",
     [](ChunkReader& in, ProjectInProgress& target) {
         target.project.tempo_bpm = in.number(0, target.project.tempo_bpm);
         target.project.meter_numerator = in.integer(1, target.project.meter_numerator);
         target.project.meter_denominator = in.integer(2, target.project.meter_denominator);
     }},
    {"MARKER", read_marker},
    {"MASTERPEAKCOL",
     [](ChunkReader& in, ProjectInProgress& target) { target.project.master().color = track_color(in); }},
    {"MASTERMUTESOLO",
     [](ChunkReader& in, ProjectInProgress& target) {
         target.project.master().mute = (in.integer(0, 0) & 1) != 0;
         target.project.master().solo = (in.integer(0, 0) & 2) != 0 ? 1 : 0;
     }},
    {"MASTER_VOLUME",
     [](ChunkReader& in, ProjectInProgress& target) {
         target.project.master().volume = in.number(0, 1.0);
         target.project.master().pan = in.number(1, 0.0);
     }},
    {"MASTER_SEL",
     [](ChunkReader& in, ProjectInProgress& target) {
         target.project.master().set_selected(in.flag(0, false));
     }},
    {"TRACK",
     [](ChunkReader& in, ProjectInProgress& target) {
         TrackInProgress track{target.project.insert_track(target.project.tracks().size()), target.folder};
         read_block(in, track, track_rules);
     }},
};

} // namespace

Result<void> parse_project(project::Project& project, std::string_view text,
                           const std::filesystem::path& folder) {
    constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
    ChunkReader in(text.substr(text.starts_with(byte_order_mark) ? byte_order_mark.size() : 0));
    if (!in.next() || !in.begins_block() || in.name() != "REAPER_PROJECT") {
        in.fail("not a project file");
        return tl::unexpected(*in.failure());
    }
    ProjectInProgress target{project, folder, std::nullopt};
    read_block(in, target, project_rules);
    if (in.failure())
        return tl::unexpected(*in.failure());
    close_region(target);
    return {};
}

} // namespace headless::rpp
