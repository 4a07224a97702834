// Sends, receives and hardware outputs. Functions count them by category: below 0 receives, 0 sends, above 0
// outputs. Some functions of the user interface count the outputs first, then the sends.

#include "headless/functions/adapter.hpp"
#include "headless/functions/attributes.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/functions/track_names.hpp"
#include "headless/project/receives.hpp"
#include "headless/rpp/properties.hpp"
#include "headless/rpp/write_object.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace headless::functions {
namespace {

using project::Route;
using project::Track;

constexpr std::string_view new_send = "AUXRECV 0 0 1 0 0 0 0 0 0 -1:U 0 -1 ''";
constexpr std::string_view new_output = "HWOUT 0 0 1 0 0 0 0 -1:U -1";
constexpr std::string_view new_master_output = "MASTERHWOUT 0 0 1 0 0 0 0 -1";

std::vector<Route> routes_of(Track& track, int category) {
    return category < 0 ? receives_of(track) : category == 0 ? sends_of(track) : hardware_outputs_of(track);
}

std::optional<Route> find_route(Track& track, int category, int index) {
    const auto routes = routes_of(track, category);
    const auto place = static_cast<std::size_t>(index);
    return place < routes.size() ? std::optional(routes[place]) : std::nullopt;
}

// By the index of the user interface; -1 is the first receive.
std::optional<Route> find_shown_route(Track& track, int index) {
    if (index < 0)
        return find_route(track, -1, -(index + 1));
    const int outputs = static_cast<int>(hardware_outputs_of(track).size());
    return index < outputs ? find_route(track, 1, index) : find_route(track, 0, index - outputs);
}

/// One field of the lines. A field that the line of outputs does not have has the word 0 there.
struct RouteField {
    std::string_view key;
    std::size_t send_word;
    std::size_t output_word;
    double otherwise;
    double lowest;
    double highest;
    bool is_whole;
};

constexpr double any = 1e300;
constexpr double any_int = std::numeric_limits<int>::max();

constexpr std::array route_fields{RouteField{"I_SENDMODE", 2, 2, 0, 0, 3, true},
                                  RouteField{"D_VOL", 3, 3, 1, 0, any, false},
                                  RouteField{"D_PAN", 4, 4, 0, -1, 1, false},
                                  RouteField{"B_MUTE", 5, 5, 0, 0, 1, true},
                                  RouteField{"B_MONO", 6, 0, 0, 0, 1, true},
                                  RouteField{"B_PHASE", 7, 6, 0, 0, 1, true},
                                  RouteField{"I_SRCCHAN", 8, 7, 0, -1, any_int, true},
                                  RouteField{"I_DSTCHAN", 9, 1, 0, -1, any_int, true},
                                  RouteField{"D_PANLAW", 10, 8, -1, -any, any, false},
                                  RouteField{"I_MIDIFLAGS", 11, 0, 0, 0, any_int, true},
                                  RouteField{"I_AUTOMODE", 12, 9, -1, -1, any_int, true}};

const RouteField* find_field(std::string_view key) {
    const auto field = std::ranges::find(route_fields, key, &RouteField::key);
    return field == route_fields.end() ? nullptr : &*field;
}

std::size_t word_of(const RouteField& field, const Route& route) {
    return route.destination ? field.send_word : field.output_word;
}

// Numbers may have a tail, as in "-1:U".
std::string_view tail_of(std::string_view word) { return word.substr(std::min(word.find(':'), word.size())); }

double read(const Route& route, const RouteField& field) {
    const std::size_t place = word_of(field, route);
    if (place == 0)
        return field.otherwise;
    const std::string_view word = chunk::text_at(line_of(route), place);
    return chunk::number(word.substr(0, word.size() - tail_of(word).size())).value_or(field.otherwise);
}

bool write(const Route& route, const RouteField& field, double value) {
    const std::size_t place = word_of(field, route);
    if (place == 0 || !std::isfinite(value))
        return false;
    const double limited = std::clamp(value, field.lowest, field.highest);
    const double held = field.is_whole ? std::trunc(limited) : limited;
    if (held == read(route, field))
        return true;
    const std::string tail(tail_of(chunk::text_at(line_of(route), place)));
    chunk::set_word(line_of(route), place, chunk::decimal(held) + tail,
                    route.destination ? new_send : new_output);
    return true;
}

double number(const Route& route, std::string_view key) { return read(route, *find_field(key)); }

bool set_number(const Route& route, std::string_view key, double value) {
    return write(route, *find_field(key), value);
}

/// A part of the MIDI flags, which some functions have a key for.
struct MidiPart {
    std::string_view key;
    unsigned shift;
    unsigned mask;
};

constexpr std::array midi_parts{MidiPart{"I_MIDI_SRCCHAN", 0, 0x1F}, MidiPart{"I_MIDI_DSTCHAN", 5, 0x1F},
                                MidiPart{"I_MIDI_LINK_VOLPAN", 10, 1}, MidiPart{"I_MIDI_SRCBUS", 14, 0xFF},
                                MidiPart{"I_MIDI_DSTBUS", 22, 0xFF}};
constexpr unsigned midi_off = 31; // as source channel

unsigned midi_flags(const Route& route) { return static_cast<unsigned>(number(route, "I_MIDIFLAGS")); }

double midi_part(const Route& route, const MidiPart& part) {
    const unsigned value = midi_flags(route) >> part.shift & part.mask;
    return part.shift == 0 && value == midi_off ? -1.0 : static_cast<double>(value);
}

void set_midi_part(const Route& route, const MidiPart& part, double value) {
    const unsigned wanted = value < 0.0 ? midi_off : static_cast<unsigned>(to_int(value));
    const unsigned others = midi_flags(route) & ~(part.mask << part.shift);
    set_number(route, "I_MIDIFLAGS", others | (wanted & part.mask) << part.shift);
}

project::Envelope* find_route_envelope(const Route& route, std::string_view kind) {
    const std::string token = (route.destination ? "AUX" : "HW") + std::string(kind);
    for (project::Envelope* envelope : envelopes_of(route))
        if (rpp::envelope_token(*envelope) == token)
            return envelope;
    return nullptr;
}

// Empty for a key that names no object.
std::optional<double> object_of(const Route& route, std::string_view key) {
    constexpr std::string_view envelope_prefix = "P_ENV:<";
    if (key == "P_DESTTRACK")
        return route.destination ? address_of(route.destination) : 0.0;
    if (key == "P_SRCTRACK")
        return route.source ? address_of(route.source) : 0.0;
    if (key.starts_with(envelope_prefix)) {
        project::Envelope* envelope = find_route_envelope(route, key.substr(envelope_prefix.size()));
        return envelope ? address_of(envelope) : 0.0;
    }
    return std::nullopt;
}

int count_sends(Track& track, int category) { return static_cast<int>(routes_of(track, category).size()); }

double get_route_value(Workstation& workstation, Track& track, int category, int index,
                       const char* parameter) {
    const std::string_view key = parameter ? parameter : "";
    const RouteField* field = find_field(key);
    const bool is_object = key.starts_with("P_");
    if (!field && !is_object) {
        report_unknown_key(workstation, "GetTrackSendInfo_Value", parameter);
        return 0.0;
    }
    const auto route = find_route(track, category, index);
    if (!route)
        return 0.0;
    if (field)
        return read(*route, *field);
    const auto object = object_of(*route, key);
    if (!object)
        report_unknown_key(workstation, "GetTrackSendInfo_Value", parameter);
    return object.value_or(0.0);
}

bool set_route_value(Workstation& workstation, Track& track, int category, int index, const char* parameter,
                     double value) {
    const RouteField* field = find_field(parameter ? parameter : "");
    if (!field) {
        report_unknown_key(workstation, "SetTrackSendInfo_Value", parameter);
        return false;
    }
    const auto route = find_route(track, category, index);
    return route && write(*route, *field, value);
}

// Returns the value that there is afterwards.
double get_set_value(Workstation& workstation, Track& track, int category, int index, const char* parameter,
                     bool is_set, double value) {
    const std::string_view key = parameter ? parameter : "";
    const auto part = std::ranges::find(midi_parts, key, &MidiPart::key);
    if (part == midi_parts.end()) {
        if (is_set)
            set_route_value(workstation, track, category, index, parameter, value);
        return get_route_value(workstation, track, category, index, parameter);
    }
    const auto route = find_route(track, category, index);
    if (!route)
        return 0.0;
    if (is_set && std::isfinite(value))
        set_midi_part(*route, *part, value);
    return midi_part(*route, *part);
}

Track* get_route_track(Track& track, int category, int index, int which) {
    const auto route = find_route(track, category, index);
    return !route ? nullptr : which == 0 ? route->source : route->destination;
}

project::Envelope* get_route_envelope(Track& track, int category, int index, int type) {
    constexpr std::array<std::string_view, 3> kinds{"VOLENV", "PANENV", "MUTEENV"};
    const auto route = find_route(track, category, index);
    const auto kind = static_cast<std::size_t>(type);
    return route && kind < kinds.size() ? find_route_envelope(*route, kinds[kind]) : nullptr;
}

// Inserts the line after the others of its kind and their envelopes.
void insert_after(const std::vector<Route>& present, Track& holder, std::string_view content) {
    chunk::Text line = chunk::Text::made(content);
    if (present.empty()) {
        rpp::insert(holder, std::move(line));
        return;
    }
    chunk::Lines& lines = *project::file_lines_of(holder);
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(present.back().end), std::move(line));
}

int create_output(Track& track) {
    const auto present = hardware_outputs_of(track);
    if (is_master(track) && present.empty()) {
        rpp::give_lines(track.project());
        chunk::erase(*project::file_lines_of(track), "MASTERHWOUT"); // a bare line says that there is none
    }
    insert_after(present, track, is_master(track) ? new_master_output : new_output);
    return static_cast<int>(present.size());
}

// Returns the new send's index, -1 if there can be none.
int create_send(Track& track, Track* destination) {
    if (!destination)
        return create_output(track);
    if (is_master(track) || is_master(*destination) || &track == destination)
        return -1;
    chunk::Text line = chunk::Text::made(new_send);
    chunk::set_word(line, 1, std::to_string(track.index()));
    insert_after(receives_of(*destination), *destination, line.content());
    const auto sends = sends_of(track);
    for (std::size_t index = sends.size(); index-- > 0;)
        if (sends[index].destination == destination)
            return static_cast<int>(index); // the last of those to that track
    return -1;
}

bool remove_send(Track& track, int category, int index) {
    const auto route = find_route(track, category, index);
    if (!route)
        return false;
    erase(*route);
    if (is_master(track) && hardware_outputs_of(track).empty())
        rpp::insert(track, chunk::Text::made("MASTERHWOUT"));
    return true;
}

std::string output_name(const Route& route) {
    constexpr int channel_bits = 0x3FF;
    constexpr int mono = 0x400;
    const int destination = to_int(number(route, "I_DSTCHAN"));
    const int channel = destination & channel_bits;
    const std::string first = "Output " + std::to_string(channel + 1);
    return (destination & mono) != 0 ? first : first + " / Output " + std::to_string(channel + 2);
}

bool put_name(const std::optional<Route>& route, const Track* track, char* buffer, int size) {
    if (!route)
        return false;
    workstation::copy_text(track                ? displayed_name(*track)
                           : route->destination ? ""
                                                : output_name(*route),
                           buffer, size);
    return true;
}

bool get_send_name(Track& track, int index, char* buffer, int size) {
    const auto route = index < 0 ? std::nullopt : find_shown_route(track, index);
    return put_name(route, route ? route->destination : nullptr, buffer, size);
}

bool get_receive_name(Track& track, int index, char* buffer, int size) {
    const auto route = find_route(track, -1, index);
    return put_name(route, route ? route->source : nullptr, buffer, size);
}

bool put_mute(const std::optional<Route>& route, bool* mute) {
    if (route)
        put(mute, number(*route, "B_MUTE") != 0.0);
    return route.has_value();
}

bool put_volume_and_pan(const std::optional<Route>& route, double* volume, double* pan) {
    if (!route)
        return false;
    put(volume, number(*route, "D_VOL"));
    put(pan, number(*route, "D_PAN"));
    return true;
}

bool get_send_mute(Track& track, int index, bool* mute) {
    return put_mute(find_shown_route(track, index), mute);
}

bool get_receive_mute(Track& track, int index, bool* mute) {
    return put_mute(find_route(track, -1, index), mute);
}

bool get_send_volume_and_pan(Track& track, int index, double* volume, double* pan) {
    return put_volume_and_pan(find_shown_route(track, index), volume, pan);
}

bool get_receive_volume_and_pan(Track& track, int index, double* volume, double* pan) {
    return put_volume_and_pan(find_route(track, -1, index), volume, pan);
}

bool toggle_mute(Track& track, int index) {
    const auto route = find_shown_route(track, index);
    return route && set_number(*route, "B_MUTE", number(*route, "B_MUTE") == 0.0 ? 1.0 : 0.0);
}

bool set_send_volume(Track& track, int index, double volume, int /*edit*/) {
    const auto route = find_shown_route(track, index);
    return route && set_number(*route, "D_VOL", volume);
}

bool set_send_pan(Track& track, int index, double pan, int /*edit*/) {
    const auto route = find_shown_route(track, index);
    return route && set_number(*route, "D_PAN", pan);
}

} // namespace

std::span<const workstation::HostFunction> send_functions() {
    static const workstation::HostFunction table[] = {
        {"GetTrackNumSends",
         host_function<count_sends>("tr,category",
                                    "Number of receives (-1), sends (0) or hardware outputs (1)")},
        {"CreateTrackSend",
         host_function<create_send>(
             "tr,desttrInOptional",
             "Makes a send, without a track an output; returns its index, -1 if it cannot be")},
        {"RemoveTrackSend",
         host_function<remove_send>("tr,category,sendidx", "Removes a receive, send or output")},
        {"GetTrackSendInfo_Value",
         host_function<get_route_value>(
             "tr,category,sendidx,parmname",
             "D_VOL, D_PAN, B_MUTE, I_SENDMODE, I_SRCCHAN, P_DESTTRACK, ... of a receive, send or output")},
        {"SetTrackSendInfo_Value",
         host_function<set_route_value>("tr,category,sendidx,parmname,newvalue",
                                        "Sets what GetTrackSendInfo_Value gives, but for the keys with P")},
        {"BR_GetSetTrackSendInfo",
         host_function<get_set_value>(
             "track,category,sendidx,parmname,setNewValue,newValue",
             "Gets or sets what GetTrackSendInfo_Value gives, and parts of the MIDI flags")},
        {"BR_GetMediaTrackSendInfo_Track",
         host_function<get_route_track>("track,category,sendidx,trackType",
                                        "The sending track (0) or the receiving one (1)")},
        {"BR_GetMediaTrackSendInfo_Envelope",
         host_function<get_route_envelope>("track,category,sendidx,envelopeType",
                                           "The envelope of volume (0), pan (1) or mute (2)")},
        {"GetTrackSendName",
         host_function<get_send_name>("track,send_index,bufOut,bufOut_sz",
                                      "Where the output or send goes; outputs are counted first")},
        {"GetTrackReceiveName", host_function<get_receive_name>("track,recv_index,bufOut,bufOut_sz",
                                                                "Where the receive comes from")},
        {"GetTrackSendUIMute",
         host_function<get_send_mute>("track,send_index,muteOut",
                                      "Whether the output or send is muted; outputs are counted first")},
        {"GetTrackReceiveUIMute",
         host_function<get_receive_mute>("track,recv_index,muteOut", "Whether the receive is muted")},
        {"GetTrackSendUIVolPan",
         host_function<get_send_volume_and_pan>("track,send_index,volumeOut,panOut",
                                                "Volume and pan; outputs are counted first")},
        {"GetTrackReceiveUIVolPan",
         host_function<get_receive_volume_and_pan>("track,recv_index,volumeOut,panOut",
                                                   "Volume and pan of the receive")},
        {"ToggleTrackSendUIMute",
         host_function<toggle_mute>("track,send_idx",
                                    "Mutes or unmutes; outputs are counted first, receives below 0")},
        {"SetTrackSendUIVol",
         host_function<set_send_volume>("track,send_idx,vol,isend",
                                        "Sets the volume; outputs are counted first, receives below 0")},
        {"SetTrackSendUIPan",
         host_function<set_send_pan>("track,send_idx,pan,isend",
                                     "Sets the pan; outputs are counted first, receives below 0")},
    };
    return table;
}

} // namespace headless::functions
