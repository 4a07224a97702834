// The properties of tracks by key: numbers and texts.

#include "common/native_color.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/attributes.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/envelope_lookup.hpp"
#include "headless/functions/tables.hpp"
#include "headless/functions/track_names.hpp"
#include "headless/rpp/texts.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace headless::functions {
namespace {

using project::Track;

// There is no screen. Scripts divide by these sizes.
constexpr double panel_height = 60.0;
constexpr double mixer_width = 80.0;
constexpr double mixer_height = 300.0;

// The number that users see; -1 for the master.
double track_number(const Track& track) {
    return is_master(track) ? -1.0 : static_cast<double>(track.index() + 1);
}

// The master comes first.
double place_on_screen(const Track& track) {
    return is_master(track) ? 0.0 : static_cast<double>(track.index());
}

template <int value>
double always(const Track&) {
    return value;
}

double project_of(const Track& track) { return address_of(&track.project()); }

double get_mute(const Track& track) { return track.mute ? 1.0 : 0.0; }
void set_mute(Track& track, double value) { track.mute = value != 0.0; }

double get_solo(const Track& track) { return static_cast<double>(track.solo); }
void set_solo(Track& track, double value) { track.solo = to_int(value); }

double get_selected(const Track& track) { return track.selected() ? 1.0 : 0.0; }
void set_selected(Track& track, double value) { track.set_selected(value != 0.0); }

double get_color(const Track& track) { return static_cast<double>(track.color); }
void set_color(Track& track, double value) { track.color = used_color(to_int(value)); }

double get_volume(const Track& track) { return track.volume; }
void set_volume(Track& track, double value) { track.volume = std::max(value, 0.0); }

double get_pan(const Track& track) { return track.pan; }
void set_pan(Track& track, double value) { track.pan = std::clamp(value, -1.0, 1.0); }

double get_folder_depth(const Track& track) { return static_cast<double>(track.folder_depth_change()); }
void set_folder_depth(Track& track, double value) { track.set_folder_depth_change(to_int(value)); }

constexpr int most_channels = 128;

// Tracks have an even number of channels.
double even_channels(double value) {
    return static_cast<double>(std::clamp((to_int(value) + 1) / 2 * 2, 2, most_channels));
}

double get_channels(const Track& track) { return rpp::number_of(track, {"NCHAN", 1}); }
void set_channels(Track& track, double value) { rpp::set_number(track, {"NCHAN", 1}, even_channels(value)); }

double get_master_channels(const Track& master) { return rpp::number_of(master, {"MASTER_NCH", 1}); }
void set_master_channels(Track& master, double value) {
    rpp::set_number(master, {"MASTER_NCH", 1}, even_channels(value));
}

// A missing line means the meter that tracks had before there were others.
double get_meter(const Track& track) {
    return track.block && !chunk::find_line(track.block->lines, "VU") ? 0.0
                                                                      : rpp::number_of(track, {"VU", 1});
}
void set_meter(Track& track, double value) {
    if (get_meter(track) == value)
        return;
    rpp::set_number(track, {"VU", 1}, std::max(to_int(value), 0));
    rpp::give_lines(track);
    if (!chunk::find_line(track.block->lines,
                          "VU")) // the default is written, too, as its absence means another value
        rpp::insert(track, chunk::Text::made("VU " + std::to_string(to_int(value))));
}

constexpr Attribute<Track> common_rows[] = {
    {"P_PROJECT", project_of, nullptr},
    {"P_PARTRACK", [](const Track& track) { return address_of(track.parent()); }, nullptr},
    {"IP_TRACKNUMBER", track_number, nullptr},
    {"B_MUTE", get_mute, set_mute},
    {"I_SOLO", get_solo, set_solo},
    {"I_SELECTED", get_selected, set_selected},
    {"I_CUSTOMCOLOR", get_color, set_color},
    {"D_VOL", get_volume, set_volume},
    {"D_PAN", get_pan, set_pan},
    {"B_RECMON_IN_EFFECT", always<0>, nullptr},
    {"I_WNDH", always<static_cast<int>(panel_height)>, nullptr},
    {"I_TCPH", always<static_cast<int>(panel_height)>, nullptr},
    {"I_TCPY", [](const Track& track) { return place_on_screen(track) * panel_height; }, nullptr},
    {"I_MCPX", [](const Track& track) { return place_on_screen(track) * mixer_width; }, nullptr},
    {"I_MCPY", always<0>, nullptr},
    {"I_MCPW", always<static_cast<int>(mixer_width)>, nullptr},
    {"I_MCPH", always<static_cast<int>(mixer_height)>, nullptr},
};

constexpr Attribute<Track> track_rows[] = {
    {"B_SOLO_DEFEAT", flag_at("MUTESOLO", 3)},
    {"B_PHASE", flag_at("IPHASE", 1)},
    {"D_PANLAW", number_at("VOLPAN", 3)},
    {"I_PANLAW_FLAGS", whole_number_at("PANLAWFLAGS", 1, 0, 3)},
    {"D_WIDTH", number_at("WIDTH", 1, -1, 1)},
    {"D_DUALPANL", number_at("VOLPAN", 4, -1, 1)},
    {"D_DUALPANR", number_at("VOLPAN", 5, -1, 1)},
    {"I_PANMODE", whole_number_at("PANMODE", 1, -1, 6)},
    {"I_FOLDERDEPTH", get_folder_depth, set_folder_depth},
    {"I_FOLDERCOMPACT", whole_number_at("BUSCOMP", 1, 0, 2)},
    {"I_FXEN", flag_at("FX", 1)},
    {"I_RECARM", flag_at("REC", 1)},
    {"I_RECINPUT", whole_number_at("REC", 2)},
    {"I_RECMON", whole_number_at("REC", 3, 0, 2)},
    {"I_RECMODE", whole_number_at("REC", 4, 0)},
    {"I_RECMONITEMS", flag_at("REC", 5)},
    {"I_RECMODE_FLAGS", whole_number_at("REC", 8, 0)},
    {"B_AUTO_RECARM", flag_at("AUTO_RECARM", 1)},
    {"I_AUTOMODE", whole_number_at("AUTOMODE", 1, 0, 5)},
    {"I_NCHAN", get_channels, set_channels},
    {"I_MIDIHWOUT", whole_number_at("MIDIOUT", 1, -1)},
    {"I_PERFFLAGS", whole_number_at("PERF", 1, 0)},
    {"I_HEIGHTOVERRIDE", whole_number_at("TRACKHEIGHT", 1, 0)},
    {"B_HEIGHTLOCK", flag_at("TRACKHEIGHT", 3)},
    {"B_SHOWINMIXER", flag_at("SHOWINMIX", 1)},
    {"B_SHOWINTCP", flag_at("SHOWINMIX", 4)},
    {"F_MCP_FXSEND_SCALE", number_at("SHOWINMIX", 2, 0, 1)},
    {"F_MCP_SENDRGN_SCALE", number_at("SHOWINMIX", 3, 0, 1)},
    {"F_MCP_FXPARM_SCALE", number_at("SHOWINMIX", 5, 0, 1)},
    {"B_MAINSEND", flag_at("MAINSEND", 1)},
    {"C_MAINSEND_OFFS", whole_number_at("MAINSEND", 2, 0, most_channels - 1)},
    {"C_MAINSEND_NCH", whole_number_at("MAINSEND_NCH", 1, 0, most_channels)},
    {"B_FREEMODE", whole_number_at("FREEMODE", 1, 0, 2)},
    {"I_FREEMODE", whole_number_at("FREEMODE", 1, 0, 2)},
    {"C_BEATATTACHMODE", whole_number_at("BEAT", 1, -1, 2)},
    {"I_PLAY_OFFSET_FLAG", whole_number_at("PLAYOFFS", 2, 0, 3)},
    {"D_PLAY_OFFSET", number_at("PLAYOFFS", 1)},
    {"I_VUMODE", get_meter, set_meter},
    {"I_SPACER", flag_at("SPACER", 1)},
};

// The master's lines are the project's.
constexpr Attribute<Track> master_rows[] = {
    {"B_SOLO_DEFEAT", always<0>, nullptr},
    {"B_PHASE", always<0>, nullptr},
    {"D_PANLAW", number_at("MASTER_VOLUME", 3)},
    {"D_DUALPANL", number_at("MASTER_VOLUME", 4, -1, 1)},
    {"D_DUALPANR", number_at("MASTER_VOLUME", 5, -1, 1)},
    {"I_PANMODE", whole_number_at("MASTER_PANMODE", 1, -1, 6)},
    {"I_FOLDERDEPTH", always<0>, nullptr},
    {"I_FOLDERCOMPACT", always<0>, nullptr},
    {"I_FXEN", flag_at("MASTER_FX", 1)},
    {"I_RECARM", always<0>, nullptr},
    {"I_AUTOMODE", whole_number_at("MASTERAUTOMODE", 1, 0, 5)},
    {"I_NCHAN", get_master_channels, set_master_channels},
    {"I_HEIGHTOVERRIDE", whole_number_at("MASTERTRACKHEIGHT", 1, 0)},
};

constexpr const char* reader = "GetMediaTrackInfo_Value";
constexpr const char* writer = "SetMediaTrackInfo_Value";

// Null for an unknown key, which is reported.
const Attribute<Track>* find_attribute(Workstation& workstation, const Track& track, const char* function,
                                       const char* key) {
    const auto has_key = [key](const Attribute<Track>& row) { return key && std::strcmp(row.key, key) == 0; };
    const std::span<const Attribute<Track>> own =
        is_master(track) ? std::span<const Attribute<Track>>(master_rows) : track_rows;
    for (const std::span<const Attribute<Track>> rows : {std::span<const Attribute<Track>>(common_rows), own})
        if (const auto row = std::ranges::find_if(rows, has_key); row != rows.end())
            return &*row;
    report_unknown_key(workstation, function, key);
    return nullptr;
}

double get_track_value(Workstation& workstation, Track& track, const char* key) {
    constexpr std::string_view envelope_prefix = "P_ENV:";
    if (const std::string text = workstation::to_string(key); text.starts_with(envelope_prefix)) {
        project::Envelope* envelope =
            find_envelope(track, std::string_view(text).substr(envelope_prefix.size()));
        return envelope ? address_of(envelope) : 0.0;
    }
    const Attribute<Track>* attribute = find_attribute(workstation, track, reader, key);
    return attribute ? attribute->read(track) : 0.0;
}

bool set_track_value(Workstation& workstation, Track& track, const char* key, double value) {
    const Attribute<Track>* attribute = find_attribute(workstation, track, writer, key);
    return attribute && std::isfinite(value) && attribute->write(track, value);
}

bool put_text(std::string_view text, char* buffer) {
    workstation::copy_text(text, buffer, workstation::unsized_buffer_bytes);
    return true;
}

bool get_set_guid(Track& track, char* text, bool is_set) {
    if (!is_set) {
        if (!is_master(track) && !track.id)
            track.id = track.project().guids.next();
        return put_text(chunk::text_of(track.id), text);
    }
    const auto id = chunk::guid_of(text);
    if (!id || !*id || is_master(track))
        return false;
    rpp::give_lines(track);
    track.id = *id;
    if (chunk::guid_of(chunk::text_at(track.block->head, 1)))
        chunk::set_word(track.block->head, 1, chunk::text_of(*id));
    return true;
}

// Areas that are marked on the screen are no part of the project.
bool get_set_marked_areas(Workstation& workstation, const Track& track, const char* key, char* text,
                          bool is_set) {
    get_or_set(workstation.track_session.marked_areas[{track.serial(), key}], text, is_set);
    return true;
}

bool get_set_script_text(Track& track, std::string_view key, char* text, bool is_set) {
    if (is_master(track))
        return false;
    if (is_set)
        return rpp::set_script_text(track, key, text);
    const auto stored = rpp::script_text(track, key);
    put_text(stored.value_or(""), text);
    return stored.has_value();
}

bool get_set_line_text(Track& track, rpp::FieldPlace place, char* text, bool is_set) {
    if (!is_set)
        return put_text(rpp::text_of(track, place), text);
    rpp::set_text(track, place, text);
    return true;
}

bool get_set_icon(Track& track, char* text, bool is_set) {
    constexpr rpp::FieldPlace place{"TRACKIMGFN", 1};
    if (!is_set)
        return put_text(rpp::text_of(track, place), text);
    if (rpp::text_of(track, place) == text)
        return true;
    rpp::give_lines(track);
    chunk::erase(track.block->lines, place.token);
    if (*text)
        rpp::insert(track, chunk::Text::made(std::string(place.token) + " " + chunk::in_quotes(text)));
    return true;
}

bool get_set_track_string(Workstation& workstation, Track& track, const char* parameter, char* text,
                          bool is_set) {
    if (!parameter || !text)
        return false;
    const std::string_view key = parameter;
    constexpr std::string_view script_prefix = "P_EXT:";
    if (key == "GUID")
        return get_set_guid(track, text, is_set);
    if (key == "P_RAZOREDITS" || key == "P_RAZOREDITS_EXT")
        return get_set_marked_areas(workstation, track, parameter, text, is_set);
    const bool is_known = key == "P_NAME" || key == "P_ICON" || key == "P_TCP_LAYOUT" ||
                          key == "P_MCP_LAYOUT" || key.starts_with(script_prefix);
    if (!is_known) {
        report_unknown_key(workstation, "GetSetMediaTrackInfo_String", parameter);
        return false;
    }
    if (is_master(track)) {
        if (key != "P_NAME")
            report_unknown_key(workstation, "GetSetMediaTrackInfo_String of the master", parameter);
        return false;
    }
    if (key.starts_with(script_prefix))
        return get_set_script_text(track, key.substr(script_prefix.size()), text, is_set);
    if (key == "P_ICON")
        return get_set_icon(track, text, is_set);
    if (key != "P_NAME")
        return get_set_line_text(track, {"LAYOUTS", key == "P_TCP_LAYOUT" ? 1U : 2U}, text, is_set);
    get_or_set(track.name, text, is_set);
    return true;
}

} // namespace

std::span<const workstation::HostFunction> track_property_functions() {
    static const workstation::HostFunction table[] = {
        {"GetMediaTrackInfo_Value",
         host_function<get_track_value>("tr,parmname",
                                        "A property of the track, such as D_VOL or I_FOLDERDEPTH")},
        {"SetMediaTrackInfo_Value",
         host_function<set_track_value>("tr,parmname,newvalue",
                                        "Sets what GetMediaTrackInfo_Value gives, but for the keys with P")},
        {"GetSetMediaTrackInfo_String",
         host_function<get_set_track_string>(
             "tr,parmname,stringNeedBig,setNewValue",
             "Gets or sets P_NAME, P_ICON, P_TCP_LAYOUT, P_MCP_LAYOUT, P_RAZOREDITS, P_EXT:key or GUID")},
    };
    return table;
}

} // namespace headless::functions
