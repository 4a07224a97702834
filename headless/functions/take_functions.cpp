// Host functions for takes: names, values, and access to their envelopes.

#include "headless/functions/adapter.hpp"
#include "headless/functions/attributes.hpp"
#include "headless/functions/c_guid.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/colors.hpp"
#include "headless/functions/tables.hpp"
#include "headless/functions/text_attributes.hpp"

#include <algorithm>
#include <string>

namespace headless::functions {
namespace {

const char* get_take_name(const project::Take& take) { return take.name.c_str(); }

bool set_id(project::Take& take, const std::string& text) {
    const auto id = chunk::guid_of(text);
    if (!id)
        return false;
    rpp::set_text(take, {"GUID", 1}, chunk::text_of(*id));
    take.id = *id;
    return true;
}

std::string id_of(project::Take& take) { return id_text(take, take.item().track().project()); }

constexpr TextAttribute<project::Take> text_rows[] = {
    {"P_NAME", [](project::Take& take) { return take.name; },
     [](project::Take& take, const std::string& text) {
         take.name = text;
         return true;
     }},
    {"GUID", id_of, set_id},
};

constexpr TextAttributes<project::Take> texts{"GetSetMediaItemTakeInfo_String", text_rows};

void get_id(project::Take& take, char* buffer, int size) {
    workstation::copy_text(id_of(take), buffer, size);
}

project::Take* find_take(const project::Project& project, const chunk::Guid& id) {
    for (const auto& track : project.tracks()) {
        for (const auto& item : track->items()) {
            const auto take = std::ranges::find(item->takes(), id, &project::Take::id);
            if (id && take != item->takes().end())
                return take->get();
        }
    }
    return nullptr;
}

project::Take* find_take_by_text(const project::Project& project, const char* text) {
    return find_take(project, chunk::guid_of(workstation::to_string(text)).value_or(chunk::Guid()));
}

project::Take* find_take_by_guid(const project::Project& project, const void* guid) {
    return find_take(project, guid ? guid_from_c(guid) : chunk::Guid());
}

project::Item* get_take_item(const project::Take& take) { return &take.item(); }

double number_in_item(const project::Take& take) {
    const auto& takes = take.item().takes();
    return static_cast<double>(std::ranges::find(takes, &take, &std::unique_ptr<project::Take>::get) -
                               takes.begin());
}

// Where the pan law stands depends on the take's place among the others.
rpp::FieldPlace pan_law_place(const project::Take& take) {
    return chunk::find_line(take.lines, "TAKEVOLPAN") ? rpp::FieldPlace{"TAKEVOLPAN", 3}
                                                      : rpp::FieldPlace{"VOLPAN", 4};
}

constexpr rpp::FieldPlace color_place{"TAKECOLOR", 1};

double get_color(const project::Take& take) {
    return native_color(take, color_place, to_int(rpp::number_of(take, color_place)));
}

void set_color(project::Take& take, double value) {
    if (value == get_color(take))
        return;
    rpp::set_number(take, color_place, used_color(to_int(value)));
    rpp::set_text(take, {color_place.token, 2}, native_byte_order);
}

double nothing(const project::Take&) { return 0.0; }

constexpr Attribute<project::Take> rows[] = {
    {"P_TRACK", [](const project::Take& take) { return address_of(&take.item().track()); }, nullptr},
    {"P_ITEM", [](const project::Take& take) { return address_of(&take.item()); }, nullptr},
    {"IP_TAKENUMBER", number_in_item, nullptr},
    {"D_VOL", [](const project::Take& take) { return take.volume; },
     [](project::Take& take, double value) { take.volume = value; }},
    {"D_PAN", [](const project::Take& take) { return take.pan; },
     [](project::Take& take, double value) { take.pan = std::clamp(value, -1.0, 1.0); }},
    {"D_STARTOFFS", [](const project::Take& take) { return take.start_offset_seconds; },
     [](project::Take& take, double value) { take.start_offset_seconds = value; }},
    {"D_PLAYRATE", [](const project::Take& take) { return take.play_rate; },
     [](project::Take& take, double value) { take.play_rate = value > 0.0 ? value : take.play_rate; }},
    {"D_PITCH", [](const project::Take& take) { return take.pitch_semitones; },
     [](project::Take& take, double value) { take.pitch_semitones = value; }},
    {"B_PPITCH", [](const project::Take& take) { return take.preserve_pitch ? 1.0 : 0.0; },
     [](project::Take& take, double value) { take.preserve_pitch = value != 0.0; }},
    {"I_CHANMODE", [](const project::Take& take) { return static_cast<double>(take.channel_mode); },
     [](project::Take& take, double value) { take.channel_mode = std::max(to_int(value), 0); }},
    {"D_PANLAW", [](const project::Take& take) { return rpp::number_of(take, pan_law_place(take)); },
     [](project::Take& take, double value) { rpp::set_number(take, pan_law_place(take), value); }},
    {"I_PITCHMODE", whole_number_at("PLAYRATE", 4, -1.0)},
    {"I_STRETCHFLAGS", whole_number_at("PLAYRATE", 5, 0.0)},
    {"F_STRETCHFADESIZE", number_at("PLAYRATE", 6, 0.0)},
    {"I_CUSTOMCOLOR", get_color, set_color},
    {"I_RECPASSID", whole_number_at("RECPASS", 1, 0.0)},
    {"I_TAKEFX_NCH", whole_number_at("TAKEFX_NCH", 1, 0.0)},
    // Scripts ask takes for these, which are keys of items: the workstation answers 0.
    {"B_MUTE", nothing, nullptr},
    {"B_LOOPSRC", nothing, nullptr},
};

constexpr Attributes<project::Take> attributes{"GetMediaItemTakeInfo_Value", "SetMediaItemTakeInfo_Value",
                                               rows};

void set_active_take(const project::Take& take) { take.item().set_active_take(take); }

int count_take_envelopes(const project::Take& take) { return static_cast<int>(take.envelopes().size()); }

project::Envelope* get_take_envelope(const project::Take& take, int index) {
    return element(take.envelopes(), index);
}

project::Envelope* get_take_envelope_by_name(const project::Take& take, const char* name) {
    return name ? take.envelope(name) : nullptr;
}

} // namespace

std::span<const workstation::HostFunction> take_functions() {
    static const workstation::HostFunction table[] = {
        {"GetTakeName", host_function<get_take_name>("take", "The take's name")},
        {"GetSetMediaItemTakeInfo_String", host_function<get_set_text<texts>, get_set_sized_text<texts>>(
                                               "tk,parmname,stringNeedBig,stringNeedBig_sz,setNewValue",
                                               "Gets or sets P_NAME, GUID, or P_EXT:key, a text of scripts")},
        {"BR_GetMediaItemTakeGUID",
         host_function<get_id>("take,guidStringOut,guidStringOut_sz", "The take's identifier")},
        {"GetMediaItemTakeByGUID",
         host_function<find_take_by_guid, find_take_by_text>(
             "project,guidGUID", "The take of that identifier, nil if there is none")},
        {"GetMediaItemTake_Item", host_function<get_take_item>("take", "The item that the take belongs to")},
        {"GetMediaItemTakeInfo_Value",
         host_function<get_value<attributes>>("take,parmname",
                                              "D_VOL, D_PAN, D_PANLAW, D_STARTOFFS, D_PLAYRATE, D_PITCH, "
                                              "B_PPITCH, I_PITCHMODE, I_STRETCHFLAGS, "
                                              "F_STRETCHFADESIZE, I_CHANMODE, I_CUSTOMCOLOR, I_RECPASSID, "
                                              "I_TAKEFX_NCH, IP_TAKENUMBER, P_TRACK "
                                              "or P_ITEM")},
        {"SetMediaItemTakeInfo_Value",
         host_function<set_value<attributes>>(
             "take,parmname,newvalue",
             "Sets what GetMediaItemTakeInfo_Value gives, but for the keys with P")},
        {"SetActiveTake", host_function<set_active_take>("take", "Makes the take the one that is heard")},
        {"CountTakeEnvelopes", host_function<count_take_envelopes>("take", "Number of the take's envelopes")},
        {"GetTakeEnvelope", host_function<get_take_envelope>(
                                "take,envidx", "The take's envelope of that index, counted from 0")},
        {"GetTakeEnvelopeByName", host_function<get_take_envelope_by_name>(
                                      "take,envname", "The take's envelope of that name, such as Volume")},
    };
    return table;
}

} // namespace headless::functions
