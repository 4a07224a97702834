// Host functions that ask about the sources of takes.

#include "headless/audio/audio_cache.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/media_sources.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/source_handles.hpp"
#include "headless/workstation/take_audio.hpp"
#include "headless/workstation/text.hpp"

#include <algorithm>
#include <string>
#include <string_view>

namespace headless::functions {

bool complete(Workstation& workstation, project::Source& source) {
    if (source.sample_rate != 0)
        return true;
    if (source.file.empty())
        return false;
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

double length_of(const project::Source& source) {
    const project::Source* section = &source;
    double skipped_seconds = 0.0; // of what sections without a length play, up to its end
    for (; section->inner && section->section.length_seconds <= 0.0; section = section->inner.get())
        skipped_seconds += section->section.start_seconds;
    const double length = section->inner ? section->section.length_seconds : section->length_seconds();
    return std::max(0.0, length - skipped_seconds);
}

bool is_midi(const project::Source& source) { return source.root().type.starts_with("MIDI"); }

namespace {

PCM_source* get_take_source(Workstation& workstation, project::Take& take) {
    const project::Source& source = take.source;
    const bool has_source =
        source.inner || !source.file.empty() || (source.type != "EMPTY" && !source.type.empty());
    return has_source ? workstation.source_handles().handle(take) : nullptr;
}

PCM_source* get_parent(Workstation& workstation, PCM_source* source) {
    return workstation.source_handles().inner_handle(source);
}

project::Project* get_sub_project(Workstation& workstation, const project::Source& source) {
    if (source.root().type == "RPP_PROJECT")
        workstation.report_once(Failure{"GetSubProjectFromSource: projects in projects are not opened"});
    return nullptr;
}

void get_source_file(const project::Source& source, char* buffer, int size) {
    workstation::copy_text(source.file.string(), buffer, size);
}

void get_source_type(const project::Source& source, char* buffer, int size) {
    workstation::copy_text(source.type, buffer, size);
}

double get_source_length(Workstation& workstation, project::Source* source, bool* is_in_quarter_notes) {
    const bool is_midi_source = source && is_midi(*source);
    put(is_in_quarter_notes, is_midi_source);
    if (is_midi_source)
        workstation.report_once(Failure{"GetMediaSourceLength: the length of MIDI is not known"});
    return source && complete(workstation, source->root()) ? length_of(*source) : 0.0;
}

int get_sample_rate(Workstation& workstation, project::Source& source) {
    return complete(workstation, source.root()) ? source.root().sample_rate : 0;
}

int count_channels(Workstation& workstation, project::Source& source) {
    return complete(workstation, source.root()) ? source.root().channels : 0;
}

bool is_midi_take(const project::Take& take) { return is_midi(take.source); }

/// Empty, which is reported once, if the file cannot be read.
audio::Metadata metadata_of(Workstation& workstation, const project::Source& source) {
    const std::filesystem::path& file = source.root().file;
    if (file.empty())
        return {};
    auto metadata = workstation.audio().metadata(file);
    if (metadata)
        return std::move(*metadata);
    workstation.report_once(metadata.error());
    return {};
}

/// Reports identifiers whose kind is not read, once each kind.
void check_kind(Workstation& workstation, std::string_view identifier) {
    constexpr std::string_view kinds[] = {"BWF", "INFO", "VORBIS", "ID3"};
    const std::string_view kind = identifier.substr(0, identifier.find(':'));
    if (std::ranges::find(kinds, kind) == std::ranges::end(kinds))
        workstation.report_once(
            Failure{"GetMediaFileMetadata: metadata of kind " + std::string(kind) + " is not read"});
}

// Without an identifier: all that there are, one a line.
int get_metadata(Workstation& workstation, const project::Source& source, const char* wanted, char* buffer,
                 int size) {
    const std::string identifier = workstation::to_string(wanted);
    if (!identifier.empty())
        check_kind(workstation, identifier);
    std::string text;
    for (const auto& [name, value] : metadata_of(workstation, source))
        if (identifier.empty())
            text.append(name).append("\n");
        else if (name == identifier)
            text = value;
    workstation::copy_text(text, buffer, size);
    return text.empty() ? 0 : 1;
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
             "The length in seconds, and whether it is in quarter notes, as for MIDI")},
        {"GetMediaSourceSampleRate", host_function<get_sample_rate>("source", "Frames a second")},
        {"GetMediaSourceNumChannels", host_function<count_channels>("source", "Number of channels")},
        {"GetMediaSourceParent",
         host_function<get_parent>("src", "What the source plays a section of, nil for any other source")},
        {"GetSubProjectFromSource",
         host_function<get_sub_project>("src", "The project that the source plays, nil for none")},
        {"TakeIsMIDI", host_function<is_midi_take>("take", "Whether the take plays MIDI")},
        {"GetMediaFileMetadata",
         host_function<get_metadata>("mediaSource,identifier,bufOutNeedBig,bufOutNeedBig_sz",
                                     "A text of the file's header, such as BWF:Description; the names of all "
                                     "for an empty one; 0 when there is none")},
    };
    return table;
}

} // namespace headless::functions
