// Host functions for takes: names, values, and access to their envelopes.

#include "headless/functions/attributes.hpp"
#include "headless/functions/door.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/text.hpp"

#include <algorithm>
#include <cstring>

namespace headless::functions {
namespace {

const char* get_take_name(workstation::Workstation& workstation, MediaItem_Take* handle) {
    const project::Take* take = workstation.live(handle);
    return take ? take->name.c_str() : nullptr;
}

bool get_set_take_string(workstation::Workstation& workstation, MediaItem_Take* handle, const char* key,
                         char* text, bool is_set) {
    project::Take* take = workstation.live(handle);
    if (!take || !key || !text)
        return false;
    if (std::strcmp(key, "P_NAME") != 0) {
        report_unknown_key(workstation, "GetSetMediaItemTakeInfo_String", key);
        return false;
    }
    if (is_set)
        take->name = text;
    else
        workstation::copy_text(take->name, text, workstation::unsized_buffer_bytes);
    return true;
}

MediaItem* get_take_item(workstation::Workstation& workstation, MediaItem_Take* handle) {
    const project::Take* take = workstation.live(handle);
    return take ? workstation::Workstation::handle(take->item()) : nullptr;
}

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

double get_take_value(workstation::Workstation& workstation, MediaItem_Take* handle, const char* key) {
    return read_attribute(workstation, attributes, workstation.live(handle), key);
}

bool set_take_value(workstation::Workstation& workstation, MediaItem_Take* handle, const char* key,
                    double value) {
    return write_attribute(workstation, attributes, workstation.live(handle), key, value);
}

void set_active_take(workstation::Workstation& workstation, MediaItem_Take* handle) {
    if (const project::Take* take = workstation.live(handle))
        take->item().set_active_take(*take);
}

int count_take_envelopes(workstation::Workstation& workstation, MediaItem_Take* handle) {
    const project::Take* take = workstation.live(handle);
    return take ? static_cast<int>(take->envelopes().size()) : 0;
}

TrackEnvelope* get_take_envelope(workstation::Workstation& workstation, MediaItem_Take* handle, int index) {
    const project::Take* take = workstation.live(handle);
    const bool exists = take && index >= 0 && static_cast<std::size_t>(index) < take->envelopes().size();
    return exists ? workstation::Workstation::handle(*take->envelopes()[static_cast<std::size_t>(index)])
                  : nullptr;
}

TrackEnvelope* get_take_envelope_by_name(workstation::Workstation& workstation, MediaItem_Take* handle,
                                         const char* name) {
    const project::Take* take = workstation.live(handle);
    project::Envelope* envelope = take && name ? take->envelope(name) : nullptr;
    return envelope ? workstation::Workstation::handle(*envelope) : nullptr;
}

} // namespace

std::span<const workstation::HostFunction> take_functions() {
    static const workstation::HostFunction table[] = {
        host_function<get_take_name, "take", "The take's name">("GetTakeName"),
        host_function<get_set_take_string, "tk,parmname,stringNeedBig,setNewValue", "Gets or sets P_NAME">(
            "GetSetMediaItemTakeInfo_String"),
        host_function<get_take_item, "take", "The item that the take belongs to">("GetMediaItemTake_Item"),
        host_function<
            get_take_value, "take,parmname",
            "D_VOL, D_PAN, D_STARTOFFS, D_PLAYRATE, D_PITCH, B_PPITCH, I_CHANMODE, IP_TAKENUMBER, P_TRACK "
            "or P_ITEM">("GetMediaItemTakeInfo_Value"),
        host_function<set_take_value, "take,parmname,newvalue",
                      "Sets what GetMediaItemTakeInfo_Value gives, but for the keys with P">(
            "SetMediaItemTakeInfo_Value"),
        host_function<set_active_take, "take", "Makes the take the one that is heard">("SetActiveTake"),
        host_function<count_take_envelopes, "take", "Number of the take's envelopes">("CountTakeEnvelopes"),
        host_function<get_take_envelope, "take,envidx", "The take's envelope of that index, counted from 0">(
            "GetTakeEnvelope"),
        host_function<get_take_envelope_by_name, "take,envname",
                      "The take's envelope of that name, such as Volume">("GetTakeEnvelopeByName"),
    };
    return table;
}

} // namespace headless::functions
