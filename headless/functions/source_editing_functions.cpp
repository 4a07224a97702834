// Host functions that make sources, give them to takes and change them.

#include "common/path_text.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/media_sources.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/audio_source.hpp"
#include "headless/workstation/source_handles.hpp"

#include <cmath>
#include <filesystem>
#include <memory>
#include <optional>
#include <system_error>
#include <utility>

namespace headless::functions {
namespace {

namespace fs = std::filesystem;

/// Empty if the file cannot be opened. That is reported only if the file exists: scripts ask for files to
/// learn whether they do.
std::optional<project::Source> open_file(Workstation& workstation, const char* name) {
    const fs::path file = path_text::path_of(workstation::to_string(name));
    Result<project::Source> source = workstation::open_source(workstation.audio(), file);
    if (source)
        return std::move(*source);
    std::error_code error;
    if (fs::is_regular_file(file, error))
        workstation.report(source.error());
    return std::nullopt;
}

PCM_source* create_from_file(Workstation& workstation, const char* name) {
    auto source = open_file(workstation, name);
    return source ? workstation.source_handles().add(std::move(*source)) : nullptr;
}

PCM_source* create_from_file_ex(Workstation& workstation, const char* name, bool /*no_midi_import*/) {
    return create_from_file(workstation, name);
}

PCM_source* create_from_type(Workstation& workstation, const char* type) {
    return workstation.source_handles().add({.file = {}, .type = workstation::to_string(type)});
}

void destroy_source(Workstation& workstation, PCM_source* source) {
    if (workstation.source_handles().live(source) && !workstation.source_handles().destroy(source))
        workstation.report(Failure{"PCM_Source_Destroy: the source belongs to a take or to a section"});
}

bool set_take_source(Workstation& workstation, project::Take& take, PCM_source* source) {
    return workstation.source_handles().set_source(take, source);
}

/// Whether the take plays audio, so that it can play a section of it.
bool has_audio(const project::Take& take) {
    return !take.source.root().file.empty() && !is_midi(take.source);
}

bool get_source_properties(Workstation& workstation, project::Take& take, bool* is_section, double* start,
                           double* length, double* fade, bool* is_reversed) {
    if (!has_audio(take))
        return false;
    project::Source& source = take.source;
    const double whole =
        complete(workstation, source.root()) ? length_of(source.inner ? *source.inner : source) : 0.0;
    const project::Section& section = source.section;
    const bool is_whole =
        !source.inner ||
        (section.start_seconds == 0.0 && (section.length_seconds <= 0.0 || section.length_seconds >= whole));
    put(is_section, !is_whole);
    put(start, is_whole ? 0.0 : section.start_seconds);
    put(length, is_whole ? whole : length_of(source));
    put(fade, source.inner ? section.overlap_seconds : 0.0);
    put(is_reversed, source.inner && section.reversed);
    return true;
}

bool set_source_properties(Workstation& workstation, project::Take& take, bool is_section, double start,
                           double length, double fade, bool is_reversed) {
    const bool is_valid = start >= 0.0 && length > 0.0 && fade >= 0.0 && std::isfinite(start + length + fade);
    if (!has_audio(take) || (is_section && !is_valid))
        return false;
    const std::shared_ptr<project::Source> inner =
        take.source.inner ? take.source.inner : std::make_shared<project::Source>(take.source);
    if (!is_section && !is_reversed) {
        take.source = project::Source(*inner);
        return true;
    }
    if (!complete(workstation, inner->root()))
        return false;
    const project::Section section = is_section ? project::Section{start, length, is_reversed, fade}
                                                : project::Section{0.0, length_of(*inner), is_reversed, 0.0};
    take.source = {.file = {}, .type = "SECTION", .section = section, .inner = inner};
    return true;
}

bool set_take_source_from_file(Workstation& workstation, project::Take& take, const char* name,
                               bool /*is_in_project_folder*/) {
    auto source = open_file(workstation, name);
    if (source)
        take.source = std::move(*source);
    return source.has_value();
}

bool is_online(const project::Source& source) { return !source.offline; }

void set_online(project::Source& source, bool is_online) { source.offline = !is_online; }

} // namespace

std::span<const workstation::HostFunction> source_editing_functions() {
    static const workstation::HostFunction table[] = {
        {"PCM_Source_CreateFromFile",
         host_function<create_from_file>("filename", "A source of an audio file; nil when it is none")},
        {"PCM_Source_CreateFromFileEx",
         host_function<create_from_file_ex>("filename,forcenoMidiImp",
                                            "A source of an audio file; nil when it is none")},
        {"PCM_Source_CreateFromType",
         host_function<create_from_type>("sourcetype", "An empty source of a kind such as WAVE")},
        {"PCM_Source_Destroy", host_function<destroy_source>("src", "Destroys a source that no take has")},
        {"SetMediaItemTake_Source",
         host_function<set_take_source>("take,source",
                                        "Gives the take the source, or a copy if another take has it")},
        {"BR_GetMediaSourceProperties",
         host_function<get_source_properties>("take,sectionOut,startOut,lengthOut,fadeOut,reverseOut",
                                              "The section that the take's source plays; false for MIDI")},
        {"BR_SetMediaSourceProperties",
         host_function<set_source_properties>("take,section,start,length,fade,reverse",
                                              "Makes the take's source play a section, or reversed")},
        {"BR_SetTakeSourceFromFile",
         host_function<set_take_source_from_file>("take,filenameIn,inProjectData",
                                                  "Gives the take an audio file; false when it is none")},
        {"CF_GetMediaSourceOnline", host_function<is_online>("src", "Whether the media is online")},
        {"CF_SetMediaSourceOnline", host_function<set_online>("src,set", "Sets the media online or offline")},
    };
    return table;
}

} // namespace headless::functions
