// Host functions for the audio files behind takes.

#include "headless/host/door.hpp"
#include "headless/host/source_handles.hpp"
#include "headless/host/text.hpp"

namespace headless {
namespace {

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

double get_source_length(Workstation& workstation, PCM_source* handle, bool* is_in_quarter_notes) {
    const Source* source = workstation.source_handles().live(handle);
    if (is_in_quarter_notes) {
        *is_in_quarter_notes = false; // those are MIDI's
    }
    return source ? source->length_seconds() : 0.0;
}

int get_sample_rate(Workstation& workstation, PCM_source* handle) {
    const Source* source = workstation.source_handles().live(handle);
    return source ? source->sample_rate : 0;
}

int count_channels(Workstation& workstation, PCM_source* handle) {
    const Source* source = workstation.source_handles().live(handle);
    return source ? source->channels : 0;
}

} // namespace

std::span<const HostFunction> source_functions() {
    static const HostFunction table[] = {
        host_function<get_source_file, "source,filenamebufOut,filenamebufOut_sz", "The source's audio file">(
            "GetMediaSourceFileName"),
        host_function<get_source_type, "source,typebufOut,typebufOut_sz", "The kind of source, such as WAVE">(
            "GetMediaSourceType"),
        host_function<get_take_source, "take", "The take's audio source">("GetMediaItemTake_Source"),
        host_function<get_source_length, "source,lengthIsQNOut",
                      "The length in seconds, and whether it is in quarter notes, which it never is">(
            "GetMediaSourceLength"),
        host_function<get_sample_rate, "source", "Frames a second">("GetMediaSourceSampleRate"),
        host_function<count_channels, "source", "Number of channels">("GetMediaSourceNumChannels"),
    };
    return table;
}

} // namespace headless
