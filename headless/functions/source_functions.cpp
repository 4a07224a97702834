// Host functions for the audio files behind takes.

#include "headless/functions/door.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/source_handles.hpp"
#include "headless/workstation/take_audio.hpp"
#include "headless/workstation/text.hpp"

namespace headless::functions {
namespace {

PCM_source* get_take_source(workstation::Workstation& workstation, MediaItem_Take* handle) {
    project::Take* take = workstation.live(handle);
    return take && !take->source.file.empty() ? workstation.source_handles().handle(*take) : nullptr;
}

void get_source_file(workstation::Workstation& workstation, PCM_source* handle, char* buffer, int size) {
    if (const project::Source* source = workstation.source_handles().live(handle))
        workstation::copy_text(source->file.native(), buffer, size);
}

// Leaves the buffer unchanged if there is no source.
void get_source_type(workstation::Workstation& workstation, PCM_source* handle, char* buffer, int size) {
    if (const project::Source* source = workstation.source_handles().live(handle))
        workstation::copy_text(source->type, buffer, size);
}

/// The source including the values that only its file holds, which are read on demand: project files do not
/// contain them.
const project::Source* read_source(workstation::Workstation& workstation, PCM_source* handle) {
    project::Source* source = workstation.source_handles().live(handle);
    if (source && source->sample_rate == 0) {
        const Result<audio::AudioFormat> format =
            workstation::decoded_format(workstation.audio(), source->file);
        if (!format) {
            workstation.report_once(format.error());
            return nullptr;
        }
        source->sample_rate = format->sample_rate;
        source->channels = format->channels;
        source->frames = format->frames;
    }
    return source;
}

double get_source_length(workstation::Workstation& workstation, PCM_source* handle,
                         bool* is_in_quarter_notes) {
    const project::Source* source = read_source(workstation, handle);
    if (is_in_quarter_notes)
        *is_in_quarter_notes = false; // only MIDI sources use them
    return source ? source->length_seconds() : 0.0;
}

int get_sample_rate(workstation::Workstation& workstation, PCM_source* handle) {
    const project::Source* source = read_source(workstation, handle);
    return source ? source->sample_rate : 0;
}

int count_channels(workstation::Workstation& workstation, PCM_source* handle) {
    const project::Source* source = read_source(workstation, handle);
    return source ? source->channels : 0;
}

} // namespace

std::span<const workstation::HostFunction> source_functions() {
    static const workstation::HostFunction table[] = {
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

} // namespace headless::functions
