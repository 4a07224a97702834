// Host functions for the audio files behind takes.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/source_handles.hpp"
#include "headless/workstation/take_audio.hpp"
#include "headless/workstation/text.hpp"

namespace headless::functions {
namespace {

PCM_source* get_take_source(Workstation& workstation, project::Take& take) {
    return take.source.file.empty() ? nullptr : workstation.source_handles().handle(take);
}

void get_source_file(const project::Source& source, char* buffer, int size) {
    workstation::copy_text(source.file.native(), buffer, size);
}

void get_source_type(const project::Source& source, char* buffer, int size) {
    workstation::copy_text(source.type, buffer, size);
}

/// Reads the values that only the source's file holds: project files do not contain them.
/// @returns false if the file cannot be read, which is reported; the values are 0
bool complete(Workstation& workstation, project::Source& source) {
    if (source.sample_rate != 0)
        return true;
    const Result<audio::AudioFormat> format = workstation::decoded_format(workstation.audio(), source.file);
    if (!format) {
        workstation.report_once(format.error());
        return false;
    }
    source.sample_rate = format->sample_rate;
    source.channels = format->channels;
    source.frames = format->frames;
    return true;
}

double get_source_length(Workstation& workstation, project::Source* source, bool* is_in_quarter_notes) {
    put(is_in_quarter_notes, false); // only MIDI sources use them
    return source && complete(workstation, *source) ? source->length_seconds() : 0.0;
}

int get_sample_rate(Workstation& workstation, project::Source& source) {
    return complete(workstation, source) ? source.sample_rate : 0;
}

int count_channels(Workstation& workstation, project::Source& source) {
    return complete(workstation, source) ? source.channels : 0;
}

} // namespace

std::span<const workstation::HostFunction> source_functions() {
    static const workstation::HostFunction table[] = {
        {"GetMediaSourceFileName", host_function<get_source_file>("source,filenamebufOut,filenamebufOut_sz",
                                                                  "The source's audio file")},
        {"GetMediaSourceType", host_function<get_source_type>("source,typebufOut,typebufOut_sz",
                                                              "The kind of source, such as WAVE")},
        {"GetMediaItemTake_Source", host_function<get_take_source>("take", "The take's audio source")},
        {"GetMediaSourceLength",
         host_function<get_source_length>(
             "source,lengthIsQNOut",
             "The length in seconds, and whether it is in quarter notes, which it never is")},
        {"GetMediaSourceSampleRate", host_function<get_sample_rate>("source", "Frames a second")},
        {"GetMediaSourceNumChannels", host_function<count_channels>("source", "Number of channels")},
    };
    return table;
}

} // namespace headless::functions
