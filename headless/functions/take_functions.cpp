// Host functions for takes: names, values, and access to their envelopes.

#include "headless/functions/adapter.hpp"
#include "headless/functions/attributes.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

#include <algorithm>
#include <cstring>

namespace headless::functions {
namespace {

const char* get_take_name(const project::Take& take) { return take.name.c_str(); }

bool get_set_take_string(Workstation& workstation, project::Take& take, const char* key, char* text,
                         bool is_set) {
    if (!key || !text)
        return false;
    if (std::strcmp(key, "P_NAME") != 0) {
        report_unknown_key(workstation, "GetSetMediaItemTakeInfo_String", key);
        return false;
    }
    get_or_set(take.name, text, is_set);
    return true;
}

project::Item* get_take_item(const project::Take& take) { return &take.item(); }

double number_in_item(const project::Take& take) {
    const auto& takes = take.item().takes();
    return static_cast<double>(std::ranges::find(takes, &take, &std::unique_ptr<project::Take>::get) -
                               takes.begin());
}

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
        {"GetSetMediaItemTakeInfo_String",
         host_function<get_set_take_string>("tk,parmname,stringNeedBig,setNewValue", "Gets or sets P_NAME")},
        {"GetMediaItemTake_Item", host_function<get_take_item>("take", "The item that the take belongs to")},
        {"GetMediaItemTakeInfo_Value",
         host_function<get_value<attributes>>(
             "take,parmname",
             "D_VOL, D_PAN, D_STARTOFFS, D_PLAYRATE, D_PITCH, B_PPITCH, I_CHANMODE, IP_TAKENUMBER, P_TRACK "
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
