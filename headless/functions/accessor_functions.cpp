// Host functions that read samples of takes and tracks.

#include "headless/functions/adapter.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/sample_reader.hpp"

#include <memory>
#include <string>

namespace headless::functions {
namespace {

using workstation::SampleReader;
using workstation::SampleReaders;

// Results of the function that reads.
constexpr int failed = -1;
constexpr int silent = 0;
constexpr int played = 1;

/// A take that cannot be read has no accessor. Why is reported, unless it has no audio at all.
SampleReader* create_take_accessor(Workstation& workstation, project::Take& take) {
    if (take.source.root().file.empty())
        return nullptr;
    if (const auto audio = workstation::audio_of(workstation.audio(), take); !audio) {
        workstation.report(audio.error());
        return nullptr;
    }
    return &workstation.sample_readers().add(std::make_unique<SampleReader>(workstation, take));
}

SampleReader* create_track_accessor(Workstation& workstation, project::Track& track) {
    return &workstation.sample_readers().add(std::make_unique<SampleReader>(workstation, track));
}

void destroy_accessor(Workstation& workstation, const SampleReader& reader) {
    workstation.sample_readers().destroy(reader);
}

double get_start(const SampleReader& reader) { return reader.start_seconds(); }
double get_end(const SampleReader& reader) { return reader.end_seconds(); }

int get_samples(Workstation& workstation, SampleReader& reader, int sample_rate, int channels,
                double start_seconds, int frames, double* buffer) {
    if (!buffer || sample_rate < 1 || channels < 1 || frames < 1)
        return failed;
    const auto count = static_cast<std::size_t>(channels) * static_cast<std::size_t>(frames);
    const auto is_played = reader.read(sample_rate, channels, start_seconds, {buffer, count});
    if (!is_played) {
        workstation.report(is_played.error());
        return failed;
    }
    return *is_played ? played : silent;
}

// Scripts have no addresses: they pass an array, whose size limits what may be written.
int get_samples_into_array(Workstation& workstation, SampleReader& reader, int sample_rate, int channels,
                           double start_seconds, int frames, double* array, int array_size) {
    if (channels > 0 && frames > array_size / channels) {
        workstation.report(Failure{"GetAudioAccessorSamples: the array has room for " +
                                   std::to_string(array_size) + " values, not for " +
                                   std::to_string(channels) + " times " + std::to_string(frames)});
        return failed;
    }
    return get_samples(workstation, reader, sample_rate, channels, start_seconds, frames, array);
}

bool has_changed(const SampleReader& reader) { return reader.has_changed(); }

bool validate(SampleReader& reader) {
    const bool has_changed = reader.has_changed();
    reader.update();
    return has_changed;
}

void update(SampleReader& reader) { reader.update(); }

} // namespace

std::span<const workstation::HostFunction> accessor_functions() {
    static const workstation::HostFunction table[] = {
        {"CreateTakeAudioAccessor",
         host_function<create_take_accessor>("take", "Reads samples of the take; nil when it has no audio")},
        {"CreateTrackAudioAccessor",
         host_function<create_track_accessor>("track", "Reads samples of all that the track's items play")},
        {"DestroyAudioAccessor", host_function<destroy_accessor>("accessor", "Ends reading samples")},
        {"GetAudioAccessorStartTime",
         host_function<get_start>("accessor", "0 for a take, the start of the first item for a track")},
        {"GetAudioAccessorEndTime",
         host_function<get_end>("accessor", "The item's length for a take, the end of the last for a track")},
        {"GetAudioAccessorSamples",
         host_function<get_samples, get_samples_into_array>(
             "accessor,samplerate,numchannels,starttime_sec,numsamplesperchannel,samplebuffer,samplebuffer_"
             "sz",
             "Fills the array with interleaved samples; 1 with audio, 0 for silence, -1 on failure")},
        {"AudioAccessorStateChanged",
         host_function<has_changed>("accessor", "Whether what it reads has changed since the last update")},
        {"AudioAccessorValidateState",
         host_function<validate>("accessor", "Updates it, and returns whether what it reads had changed")},
        {"AudioAccessorUpdate", host_function<update>("accessor", "Takes the present state for known")},
    };
    return table;
}

} // namespace headless::functions
