#include "headless/rpp/fields.hpp"

#include "common/native_color.hpp"

namespace headless::rpp {
namespace {

using project::EnvelopeProperties;
using project::Item;
using project::Project;
using project::Take;
using project::Track;

/// The value for "no colour of its own" in tracks.
constexpr double no_track_color = 16576;

double held_track_color(double value) {
    const int color = used_color(to_int(value));
    return color == 0 ? no_track_color : color;
}

Field<Track> track_color(std::string_view token) {
    return {token,
            1,
            no_track_color,
            [](const Track& track) { return held_track_color(track.color); },
            [](Track& track, double value) { track.color = used_color(to_int(value)); },
            held_track_color};
}

double at_least_zero(double value) { return std::max(value, 0.0); }

double known_shape(double value) { return static_cast<double>(project::point_shape(to_int(value))); }

// Bits of the master's state.
constexpr int master_mute = 1;
constexpr int master_solo = 2;

double held_master_state(double value) { return to_int(value) & (master_mute | master_solo); }

} // namespace

std::span<const Field<Project>> project_fields() {
    static const Field<Project> fields[] = {
        field<&Project::start_seconds>("PROJOFFS", 1, 0),
        field<&Project::start_measure>("PROJOFFS", 2, 0),
        field<&Project::ruler_mode>("TIMEMODE", 1, 1),
        field<&Project::cursor_seconds>("CURSOR", 1, 0),
        field<&Project::repeats>("LOOP", 1, 0),
        field<&Project::timebase>("TIMELOCKMODE", 1, 1),
        field<&Project::tempo_timebase>("TEMPOENVLOCKMODE", 1, 1),
        field<&Project::play_rate>("PLAYRATE", 1, 1),
        field<&Project::sample_rate>("SAMPLERATE", 1, 48000),
        field<&Project::tempo_bpm>("TEMPO", 1, 120),
        field<&Project::meter_numerator>("TEMPO", 2, 4),
        field<&Project::meter_denominator>("TEMPO", 3, 4),
    };
    return fields;
}

std::span<const Field<Track>> track_fields() {
    static const Field<Track> fields[] = {
        track_color("PEAKCOL"),
        field<&Track::timebase>("BEAT", 1, -1),
        field<&Track::volume>("VOLPAN", 1, 1),
        field<&Track::pan>("VOLPAN", 2, 0),
        field<&Track::mute>("MUTESOLO", 1, 0),
        field<&Track::solo>("MUTESOLO", 2, 0),
        {"SEL", 1, 0, [](const Track& track) { return track.selected() ? 1.0 : 0.0; },
         [](Track& track, double value) { track.set_selected(value != 0.0); }, as_flag},
    };
    return fields;
}

std::span<const Field<Track>> master_fields() {
    static const Field<Track> fields[] = {
        track_color("MASTERPEAKCOL"),
        {"MASTERMUTESOLO", 1, 0,
         [](const Track& master) {
             return static_cast<double>((master.mute ? master_mute : 0) +
                                        (master.solo != 0 ? master_solo : 0));
         },
         [](Track& master, double value) {
             master.mute = (to_int(value) & master_mute) != 0;
             master.solo = (to_int(value) & master_solo) != 0 ? 1 : 0;
         },
         held_master_state,
         [](double in_file, double wanted) {
             return static_cast<double>((to_int(in_file) & ~(master_mute | master_solo)) | to_int(wanted));
         }},
        field<&Track::volume>("MASTER_VOLUME", 1, 1),
        field<&Track::pan>("MASTER_VOLUME", 2, 0),
        {"MASTER_SEL", 1, 0, [](const Track& master) { return master.selected() ? 1.0 : 0.0; },
         [](Track& master, double value) { master.set_selected(value != 0.0); }, as_flag},
    };
    return fields;
}

std::span<const Field<Item>> item_fields() {
    static const Field<Item> fields[] = {
        {"POSITION", 1, 0, [](const Item& item) { return item.position_seconds(); },
         [](Item& item, double value) { item.set_position_seconds(value); }, as_is},
        field<&Item::snap_offset_seconds>("SNAPOFFS", 1, 0),
        {"LENGTH", 1, 0, [](const Item& item) { return item.length_seconds(); },
         [](Item& item, double value) { item.set_length_seconds(value); }, at_least_zero},
        field<&Item::loop>("LOOP", 1, 0),
        field<&Item::plays_all_takes>("ALLTAKES", 1, 0),
        field<&Item::color>("COLOR", 1, 0),
        field<&Item::timebase>("BEAT", 1, -1),
        {"SEL", 1, 0, [](const Item& item) { return item.selected() ? 1.0 : 0.0; },
         [](Item& item, double value) { item.set_selected(value != 0.0); }, as_flag},
        field<&Item::mute>("MUTE", 1, 0),
        field<&Item::volume>("VOLPAN", 1, 1),
    };
    return fields;
}

std::span<const Field<Take>> take_fields() {
    static const Field<Take> fields[] = {
        field<&Take::start_offset_seconds>("SOFFS", 1, 0), field<&Take::play_rate>("PLAYRATE", 1, 1),
        field<&Take::preserve_pitch>("PLAYRATE", 2, 1),    field<&Take::pitch_semitones>("PLAYRATE", 3, 0),
        field<&Take::channel_mode>("CHANMODE", 1, 0),
    };
    return fields;
}

std::span<const Field<Take>> volume_fields(bool is_first) {
    static const Field<Take> of_first[] = {
        field<&Take::pan>("VOLPAN", 2, 0),
        field<&Take::volume>("VOLPAN", 3, 1),
    };
    static const Field<Take> of_others[] = {
        field<&Take::pan>("TAKEVOLPAN", 1, 0),
        field<&Take::volume>("TAKEVOLPAN", 2, 1),
    };
    return is_first ? std::span<const Field<Take>>(of_first) : of_others;
}

std::span<const Field<EnvelopeProperties>> envelope_fields() {
    static const Field<EnvelopeProperties> fields[] = {
        field<&EnvelopeProperties::active>("ACT", 1, 1),
        field<&EnvelopeProperties::automation_item_options>("ACT", 2, -1),
        field<&EnvelopeProperties::visible>("VIS", 1, 1),
        field<&EnvelopeProperties::in_lane>("VIS", 2, 1),
        field<&EnvelopeProperties::lane_height>("LANEHEIGHT", 1, 0),
        field<&EnvelopeProperties::armed>("ARM", 1, 0),
        {"DEFSHAPE", 1, 0,
         [](const EnvelopeProperties& envelope) { return static_cast<double>(envelope.default_shape); },
         [](EnvelopeProperties& envelope, double value) {
             envelope.default_shape = project::point_shape(to_int(value));
         },
         known_shape},
        field<&EnvelopeProperties::fader_scaling>("VOLTYPE", 1, 0),
    };
    return fields;
}

} // namespace headless::rpp
