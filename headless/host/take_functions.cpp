// Host functions for takes: names, sources, and the way to their envelopes.

#include "headless/host/door.hpp"
#include "headless/host/source_handles.hpp"
#include "headless/host/text.hpp"

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

PCM_source* get_take_source(Workstation& workstation, MediaItem_Take* handle) {
    Take* take = workstation.live(handle);
    return take && !take->source.file.empty() ? workstation.source_handles().handle(*take) : nullptr;
}

void get_source_file(Workstation& workstation, PCM_source* handle, char* buffer, int size) {
    if (const Source* source = workstation.source_handles().live(handle)) {
        copy_text(source->file.native(), buffer, size);
    }
}

// Leaves the buffer alone when there is no source.
void get_source_type(Workstation& workstation, PCM_source* handle, char* buffer, int size) {
    if (const Source* source = workstation.source_handles().live(handle)) {
        copy_text(source->type, buffer, size);
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
        host_function<get_source_file, "source,filenamebufOut,filenamebufOut_sz", "The source's audio file">(
            "GetMediaSourceFileName"),
        host_function<get_take_source, "take", "The take's audio source">("GetMediaItemTake_Source"),
        host_function<get_source_type, "source,typebufOut,typebufOut_sz", "The kind of source, such as WAVE">(
            "GetMediaSourceType"),
        host_function<count_take_envelopes, "take", "Number of the take's envelopes">("CountTakeEnvelopes"),
        host_function<get_take_envelope, "take,envidx", "The take's envelope of that index, counted from 0">(
            "GetTakeEnvelope"),
        host_function<get_take_envelope_by_name, "take,envname",
                      "The take's envelope of that name, such as Volume">("GetTakeEnvelopeByName"),
    };
    return table;
}

} // namespace headless
