// Host functions for takes: names, values, and the way to their envelopes.

#include "headless/host/attributes.hpp"
#include "headless/host/door.hpp"
#include "headless/host/text.hpp"

#include <algorithm>
#include <cstring>

namespace headless {
namespace {

const char* get_take_name(Workstation& workstation, MediaItem_Take* handle) {
    const Take* take = workstation.live(handle);
    return take ? take->name.c_str() : nullptr;
}

bool get_set_take_string(Workstation& workstation, MediaItem_Take* handle, const char* key, char* text,
                         bool is_set) {
    Take* take = workstation.live(handle);
    if (!take || !key || !text || std::strcmp(key, "P_NAME") != 0) {
        return false;
    }
    if (is_set) {
        take->name = text;
    } else {
        copy_text(take->name, text, unsized_buffer_bytes);
    }
    return true;
}

MediaItem* get_take_item(Workstation& workstation, MediaItem_Take* handle) {
    const Take* take = workstation.live(handle);
    return take ? Workstation::handle(take->item()) : nullptr;
}

constexpr Attribute<Take> attributes[] = {
    {"D_VOL", [](const Take& take) { return take.volume; },
     [](Take& take, double value) { take.volume = value; }},
    {"D_PAN", [](const Take& take) { return take.pan; },
     [](Take& take, double value) { take.pan = std::clamp(value, -1.0, 1.0); }},
    {"D_STARTOFFS", [](const Take& take) { return take.start_offset_seconds; },
     [](Take& take, double value) { take.start_offset_seconds = value; }},
    {"D_PLAYRATE", [](const Take& take) { return take.play_rate; },
     [](Take& take, double value) { take.play_rate = value > 0.0 ? value : take.play_rate; }},
    {"D_PITCH", [](const Take& take) { return take.pitch_semitones; },
     [](Take& take, double value) { take.pitch_semitones = value; }},
    {"B_PPITCH", [](const Take& take) { return take.preserve_pitch ? 1.0 : 0.0; },
     [](Take& take, double value) { take.preserve_pitch = value != 0.0; }},
    {"I_CHANMODE", [](const Take& take) { return static_cast<double>(take.channel_mode); },
     [](Take& take, double value) { take.channel_mode = std::max(to_int(value), 0); }},
};

double get_take_value(Workstation& workstation, MediaItem_Take* handle, const char* key) {
    return read_attribute<Take>(attributes, workstation.live(handle), key);
}

bool set_take_value(Workstation& workstation, MediaItem_Take* handle, const char* key, double value) {
    return write_attribute<Take>(attributes, workstation.live(handle), key, value);
}

void set_active_take(Workstation& workstation, MediaItem_Take* handle) {
    if (const Take* take = workstation.live(handle)) {
        take->item().set_active_take(*take);
    }
}

int count_take_envelopes(Workstation& workstation, MediaItem_Take* handle) {
    const Take* take = workstation.live(handle);
    return take ? static_cast<int>(take->envelopes().size()) : 0;
}

TrackEnvelope* get_take_envelope(Workstation& workstation, MediaItem_Take* handle, int index) {
    const Take* take = workstation.live(handle);
    const bool exists = take && index >= 0 && static_cast<std::size_t>(index) < take->envelopes().size();
    return exists ? Workstation::handle(*take->envelopes()[static_cast<std::size_t>(index)]) : nullptr;
}

TrackEnvelope* get_take_envelope_by_name(Workstation& workstation, MediaItem_Take* handle, const char* name) {
    const Take* take = workstation.live(handle);
    Envelope* envelope = take && name ? take->envelope(name) : nullptr;
    return envelope ? Workstation::handle(*envelope) : nullptr;
}

} // namespace

std::span<const HostFunction> take_functions() {
    static const HostFunction table[] = {
        host_function<get_take_name, "take", "The take's name">("GetTakeName"),
        host_function<get_set_take_string, "tk,parmname,stringNeedBig,setNewValue", "Gets or sets P_NAME">(
            "GetSetMediaItemTakeInfo_String"),
        host_function<get_take_item, "take", "The item that the take belongs to">("GetMediaItemTake_Item"),
        host_function<get_take_value, "take,parmname",
                      "D_VOL, D_PAN, D_STARTOFFS, D_PLAYRATE, D_PITCH, B_PPITCH or I_CHANMODE">(
            "GetMediaItemTakeInfo_Value"),
        host_function<set_take_value, "take,parmname,newvalue", "Sets what GetMediaItemTakeInfo_Value gives">(
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

} // namespace headless
