// Finding envelopes, what they belong to, their properties and their automation items.

#include "headless/functions/adapter.hpp"
#include "headless/functions/attributes.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/envelope_lookup.hpp"
#include "headless/functions/fader_scale.hpp"
#include "headless/functions/tables.hpp"
#include "headless/project/receives.hpp"
#include "headless/rpp/state.hpp"
#include "headless/rpp/texts.hpp"

#include <array>
#include <cmath>
#include <cstdio>
#include <limits>
#include <optional>
#include <string_view>

namespace headless::functions {
namespace {

using project::Envelope;
using project::Track;

int count_track_envelopes(const Track& track) { return static_cast<int>(envelopes_of(track).size()); }

Envelope* get_track_envelope(const Track& track, int index) {
    const auto envelopes = envelopes_of(track);
    const auto place = static_cast<std::size_t>(index);
    return place < envelopes.size() ? envelopes[place] : nullptr;
}

Envelope* get_track_envelope_by_name(const Track& track, const char* name) {
    for (Envelope* envelope : envelopes_of(track))
        if (name && envelope->name() == name)
            return envelope;
    return nullptr;
}

Envelope* get_track_envelope_by_chunk_name(const Track& track, const char* name) {
    return name ? find_envelope(track, name) : nullptr;
}

Envelope* get_effect_envelope(Workstation& workstation, const Track& track, int effect, int parameter,
                              bool creates) {
    for (Envelope* envelope : envelopes_of(track)) {
        const auto owner = owner_of(*envelope);
        if (owner.effect == static_cast<std::size_t>(effect) &&
            owner.parameter == static_cast<std::size_t>(parameter))
            return envelope;
    }
    if (creates)
        workstation.report_once(
            {"GetFXEnvelope: envelopes of effects cannot be made, as no effect is loaded"});
    return nullptr;
}

Envelope* get_selected_envelope(Workstation& workstation, const project::Project&) {
    return workstation.live(workstation.session.selected_envelope);
}

Envelope* get_selected_track_envelope(Workstation& workstation, const project::Project& project) {
    Envelope* envelope = get_selected_envelope(workstation, project);
    return envelope && envelope->track ? envelope : nullptr;
}

bool get_envelope_name(const Envelope& envelope, char* buffer, int size) {
    workstation::copy_text(envelope.name(), buffer, size);
    return true;
}

int index_or_none(std::optional<std::size_t> index) { return index ? static_cast<int>(*index) : -1; }

void put_effect(const Envelope& envelope, int* effect, int* parameter) {
    const auto owner = owner_of(envelope);
    put(effect, index_or_none(owner.effect));
    put(parameter, index_or_none(owner.parameter));
}

project::Take* get_parent_take(const Envelope& envelope, int* effect, int* parameter) {
    put_effect(envelope, effect, parameter);
    return envelope.take;
}

Track* get_parent_track(const Envelope& envelope, int* effect, int* parameter) {
    put_effect(envelope, effect, parameter);
    return parent_of(envelope);
}

// A send of its track, or an output. Sends are counted from 1.
double send_number(const Envelope& envelope) {
    const auto owner = owner_of(envelope);
    if (!owner.route || !owner.route->destination || !owner.route->source)
        return 0.0;
    double number = 1.0;
    for (const project::Route& send : sends_of(*owner.route->source)) {
        if (send.holder == owner.route->holder && send.place == owner.route->place)
            return number;
        number += 1.0;
    }
    return 0.0;
}

double receive_number(const Envelope& envelope) {
    const auto owner = owner_of(envelope);
    return owner.route && owner.route->destination ? static_cast<double>(owner.route->index + 1) : 0.0;
}

double output_number(const Envelope& envelope) {
    const auto owner = owner_of(envelope);
    return owner.route && !owner.route->destination ? static_cast<double>(owner.route->index + 1) : 0.0;
}

double destination_of(const Envelope& envelope) {
    const auto owner = owner_of(envelope);
    return owner.route && owner.route->destination ? address_of(owner.route->destination) : 0.0;
}

double item_of(const Envelope& envelope) { return envelope.take ? address_of(&envelope.take->item()) : 0.0; }

constexpr int lane_height = 40; // there is no screen; scripts divide by it

double height_of(const Envelope& envelope) {
    return envelope.properties.lane_height > 0 ? envelope.properties.lane_height : lane_height;
}

constexpr Attribute<Envelope> rows[] = {
    {"P_TRACK", [](const Envelope& envelope) { return address_of(parent_of(envelope)); }, nullptr},
    {"P_DESTTRACK", destination_of, nullptr},
    {"P_ITEM", item_of, nullptr},
    {"P_TAKE", [](const Envelope& envelope) { return address_of(envelope.take); }, nullptr},
    {"I_SEND_IDX", send_number, nullptr},
    {"I_HWOUT_IDX", output_number, nullptr},
    {"I_RECV_IDX", receive_number, nullptr},
    {"I_TCPY", [](const Envelope&) { return 0.0; }, nullptr},
    {"I_TCPY_USED", [](const Envelope&) { return 0.0; }, nullptr},
    {"I_TCPH", height_of, nullptr},
    {"I_TCPH_USED", height_of, nullptr},
};

constexpr Attributes<Envelope> attributes{"GetEnvelopeInfo_Value", "GetEnvelopeInfo_Value", rows};

bool get_set_flag(bool& flag, char* text, bool is_set) {
    if (is_set)
        flag = std::string_view(text) != "0";
    else
        workstation::copy_text(flag ? "1" : "0", text, workstation::unsized_buffer_bytes);
    return true;
}

bool get_set_envelope_string(Workstation& workstation, Envelope& envelope, const char* parameter, char* text,
                             bool is_set) {
    if (!parameter || !text)
        return false;
    const std::string_view key = parameter;
    constexpr std::string_view script_prefix = "P_EXT:";
    project::EnvelopeProperties& properties = envelope.properties;
    if (key == "ACTIVE")
        return get_set_flag(properties.active, text, is_set);
    if (key == "ARM")
        return get_set_flag(properties.armed, text, is_set);
    if (key == "VISIBLE")
        return get_set_flag(properties.visible, text, is_set);
    if (key == "SHOWLANE")
        return get_set_flag(properties.in_lane, text, is_set);
    if (key == "GUID" && !is_set) {
        if (!envelope.id)
            envelope.id = project_of(envelope).guids.next();
        workstation::copy_text(chunk::text_of(envelope.id), text, workstation::unsized_buffer_bytes);
        return true;
    }
    if (key.starts_with(script_prefix)) {
        const std::string_view name = key.substr(script_prefix.size());
        if (is_set) {
            give_lines(envelope);
            return rpp::set_script_text(envelope, name, text);
        }
        const auto stored = rpp::script_text(envelope, name);
        workstation::copy_text(stored.value_or(""), text, workstation::unsized_buffer_bytes);
        return stored.has_value();
    }
    if (key != "GUID")
        report_unknown_key(workstation, "GetSetEnvelopeInfo_String", parameter);
    return false;
}

std::string with_decimals(double value, int decimals) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
    return text.data();
}

// Decibels of gains, percent to a side of pans, the plain number of others.
std::string format(const Envelope& envelope, double value) {
    enum : std::uint8_t { volume, volume_before, pan, pan_before };
    constexpr double decibels_per_decade = 20.0;
    constexpr double percent = 100.0;
    switch (range_of(envelope).type) {
    case volume:
    case volume_before: {
        const double gain = from_script(envelope, value);
        return gain > 0.0 ? with_decimals(decibels_per_decade * std::log10(gain), 2) + "dB" : "-inf dB";
    }
    case pan:
    case pan_before:
        if (value == 0.0)
            return "center";
        return with_decimals(std::abs(value) * percent, 0) + (value > 0.0 ? "%L" : "%R");
    default:
        return with_decimals(value, 2);
    }
}

void format_value(const Envelope& envelope, double value, char* buffer, int size) {
    workstation::copy_text(format(envelope, value), buffer, size);
}

bool get_state(Envelope& envelope, char* text, int size, bool /*is_undo*/) {
    workstation::copy_text(rpp::state_of(envelope, project_of(envelope)), text, size);
    return true;
}

bool set_state(Workstation& workstation, Envelope& envelope, const char* text, bool /*is_undo*/) {
    if (!text)
        return false;
    give_lines(envelope);
    const auto done = rpp::set_state(envelope, project_of(envelope), text);
    if (!done)
        workstation.report({"SetEnvelopeStateChunk: " + done.error().message});
    return done.has_value();
}

constexpr std::string_view automation_item_token = "POOLEDENVINST";

// The line of an automation item, null past the end.
chunk::Text* automation_item(const Envelope& envelope, int index) {
    if (!envelope.block)
        return nullptr;
    for (chunk::Node& node : envelope.block->lines)
        if (node.line() && node.token() == automation_item_token && index-- == 0)
            return node.line();
    return nullptr;
}

int count_automation_items(const Envelope& envelope) {
    int count = 0;
    while (automation_item(envelope, count))
        ++count;
    return count;
}

struct AutomationKey {
    std::string_view key;
    std::size_t word;
    double otherwise;
};

constexpr std::array automation_keys{
    AutomationKey{"D_POOL_ID", 1, 0},   AutomationKey{"D_POSITION", 2, 0},  AutomationKey{"D_LENGTH", 3, 0},
    AutomationKey{"D_STARTOFFS", 4, 0}, AutomationKey{"D_PLAYRATE", 5, 1},  AutomationKey{"D_UISEL", 6, 0},
    AutomationKey{"D_BASELINE", 7, 0},  AutomationKey{"D_AMPLITUDE", 8, 1}, AutomationKey{"D_LOOPSRC", 9, 1}};

// Returns the value after the change.
double get_set_automation_item(Workstation& workstation, Envelope& envelope, int index, const char* key,
                               double value, bool is_set) {
    const auto known =
        std::ranges::find(automation_keys, std::string_view(key ? key : ""), &AutomationKey::key);
    if (known == automation_keys.end()) {
        report_unknown_key(workstation, "GetSetAutomationItemInfo", key);
        return 0.0;
    }
    chunk::Text* line = automation_item(envelope, index);
    if (!line)
        return 0.0;
    const double present = chunk::number_at(*line, known->word, known->otherwise);
    if (!is_set || !std::isfinite(value) || value == present)
        return present;
    chunk::set_word(*line, known->word, chunk::decimal(value));
    return value;
}

int insert_automation_item(Workstation& workstation, Envelope&, int, double, double) {
    workstation.report_once({"InsertAutomationItem: automation items cannot be made"});
    return -1;
}

} // namespace

std::span<const workstation::HostFunction> envelope_property_functions() {
    static const workstation::HostFunction table[] = {
        {"CountTrackEnvelopes", host_function<count_track_envelopes>(
                                    "track", "Number of envelopes of the track, its effects and its sends")},
        {"GetTrackEnvelope",
         host_function<get_track_envelope>("track,envidx", "The envelope of that index, counted from 0")},
        {"GetTrackEnvelopeByName", host_function<get_track_envelope_by_name>(
                                       "track,envname", "The envelope of that name, such as Volume")},
        {"GetTrackEnvelopeByChunkName",
         host_function<get_track_envelope_by_chunk_name>(
             "tr,cfgchunkname_or_guid",
             "The envelope of that kind, such as <VOLENV2, or with that identifier")},
        {"GetFXEnvelope", host_function<get_effect_envelope>("track,fxindex,parameterindex,create",
                                                             "The envelope of an effect's parameter")},
        {"GetSelectedEnvelope",
         host_function<get_selected_envelope>("proj", "The selected envelope, nil if there is none")},
        {"GetSelectedTrackEnvelope", host_function<get_selected_track_envelope>(
                                         "proj", "The selected envelope, nil unless it is a track's")},
        {"GetEnvelopeName",
         host_function<get_envelope_name>("env,bufOut,bufOut_sz", "The name, such as Volume")},
        {"Envelope_GetParentTake",
         host_function<get_parent_take>(
             "env,indexOut,index2Out",
             "The take, nil for another envelope; effect and parameter, -1 if none")},
        {"Envelope_GetParentTrack",
         host_function<get_parent_track>(
             "env,indexOut,index2Out",
             "The track, nil for a take's envelope; effect and parameter, -1 if none")},
        {"GetEnvelopeInfo_Value",
         host_function<get_value<attributes>>(
             "env,parmname", "P_TRACK, P_DESTTRACK, P_ITEM, P_TAKE, I_SEND_IDX, I_HWOUT_IDX, "
                             "I_RECV_IDX, I_TCPY or I_TCPH")},
        {"GetSetEnvelopeInfo_String",
         host_function<get_set_envelope_string>(
             "env,parmname,stringNeedBig,setNewValue",
             "Gets or sets ACTIVE, ARM, VISIBLE, SHOWLANE or P_EXT:key, gets GUID")},
        {"Envelope_FormatValue",
         host_function<format_value>("env,value,bufOut,bufOut_sz", "The value as users see it")},
        {"GetEnvelopeStateChunk", host_function<get_state>("env,strNeedBig,strNeedBig_sz,isundoOptional",
                                                           "The envelope's lines in the project file")},
        {"SetEnvelopeStateChunk",
         host_function<set_state>("env,str,isundoOptional", "Replaces the envelope by those lines")},
        {"CountAutomationItems", host_function<count_automation_items>("env", "Number of automation items")},
        {"GetSetAutomationItemInfo",
         host_function<get_set_automation_item>(
             "env,autoitem_idx,desc,value,is_set",
             "Gets or sets D_POOL_ID, D_POSITION, D_LENGTH, D_STARTOFFS, D_PLAYRATE, "
             "D_UISEL, D_BASELINE, D_AMPLITUDE or D_LOOPSRC")},
        {"InsertAutomationItem",
         host_function<insert_automation_item>("env,pool_id,position,length", "Reported: cannot be done")},
    };
    return table;
}

} // namespace headless::functions
