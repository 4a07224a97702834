// The effects of tracks and takes, as far as the lines of the project tell: no effect is loaded.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/rpp/effects.hpp"

#include <algorithm>
#include <cctype>
#include <string>

namespace headless::functions {
namespace {

using project::Take;
using project::Track;

// Marks an index of the recording chain.
constexpr int recording_flag = 0x1000000;

/// An effect by the index that scripts use.
struct Place {
    rpp::EffectChain chain;
    std::size_t index;

    bool exists() const { return index < chain.size(); }
};

Place place_of(Track& track, int index) {
    const bool is_recording = index >= recording_flag;
    const auto chain = is_recording ? rpp::Chain::recording : rpp::Chain::playback;
    return {rpp::EffectChain(track, chain),
            static_cast<std::size_t>(is_recording ? index - recording_flag : index)};
}

Place place_of(Take& take, int index) { return {rpp::EffectChain(take), static_cast<std::size_t>(index)}; }

template <class T>
int count_effects(T& object) {
    return static_cast<int>(place_of(object, 0).chain.size());
}

int count_recording_effects(Track& track) {
    return static_cast<int>(place_of(track, recording_flag).chain.size());
}

template <class T>
bool get_name(T& object, int index, char* buffer, int size) {
    const Place place = place_of(object, index);
    workstation::copy_text(place.exists() ? place.chain.name(place.index) : "", buffer, size);
    return place.exists();
}

template <class T>
const char* get_id(T& object, int index) {
    static std::string kept;
    const Place place = place_of(object, index);
    kept = place.exists() ? place.chain.id(place.index) : "";
    return kept.empty() ? nullptr : kept.c_str();
}

// The bytes stay until the next call.
template <class T>
void* get_id_bytes(T& object, int index) {
    static chunk::Guid kept;
    const char* text = get_id(object, index);
    const auto id = text ? chunk::guid_of(text) : std::nullopt;
    kept = id.value_or(chunk::Guid());
    return id ? kept.bytes.data() : nullptr;
}

template <class T>
bool is_enabled(T& object, int index) {
    const Place place = place_of(object, index);
    return place.exists() && place.chain.is_enabled(place.index);
}

template <class T>
void set_enabled(T& object, int index, bool enabled) {
    if (Place place = place_of(object, index); place.exists())
        place.chain.set_enabled(place.index, enabled);
}

template <class T>
bool is_offline(T& object, int index) {
    const Place place = place_of(object, index);
    return place.exists() && place.chain.is_offline(place.index);
}

template <class T>
void set_offline(T& object, int index, bool offline) {
    if (Place place = place_of(object, index); place.exists())
        place.chain.set_offline(place.index, offline);
}

template <class T>
bool delete_effect(T& object, int index) {
    Place place = place_of(object, index);
    if (!place.exists())
        return false;
    place.chain.erase(place.index);
    return true;
}

std::string in_small_letters(std::string text) {
    std::ranges::transform(text, text.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

// Blanks after the kind do not count: "VST:ReaEQ" finds "VST: ReaEQ (Cockos)".
std::string comparable(std::string name) {
    name = in_small_letters(std::move(name));
    const std::size_t colon = name.find(": ");
    return colon == name.npos ? name : name.erase(colon + 1, 1);
}

int find_by_name(const rpp::EffectChain& chain, const std::string& name) {
    const std::string wanted = comparable(name);
    for (std::size_t index = 0; index < chain.size(); ++index)
        if (!wanted.empty() && comparable(chain.name(index)).find(wanted) != std::string::npos)
            return static_cast<int>(index);
    return -1;
}

// Finds an effect; none can be added.
int add_by_name(Workstation& workstation, Track& track, const char* name, bool is_recording, int instances) {
    const std::string wanted = workstation::to_string(name);
    const int found = find_by_name(place_of(track, is_recording ? recording_flag : 0).chain, wanted);
    constexpr int add_if_missing = 1;
    if (instances == 0 || (instances == add_if_missing && found >= 0))
        return found;
    workstation.report_once(
        {"TrackFX_AddByName: the effect \"" + wanted + "\" is not added, as effects are not loaded"});
    return -1;
}

int get_by_name(Workstation& workstation, Track& track, const char* name, bool adds) {
    return add_by_name(workstation, track, name, false, adds ? 1 : 0);
}

} // namespace

std::span<const workstation::HostFunction> effect_functions() {
    static const workstation::HostFunction table[] = {
        {"TrackFX_GetCount", host_function<count_effects<Track>>("track", "Number of the track's effects")},
        {"TrackFX_GetRecCount",
         host_function<count_recording_effects>("track", "Number of effects on the track's input")},
        {"TrackFX_GetFXName", host_function<get_name<Track>>("track,fx,bufOut,bufOut_sz",
                                                             "The effect's name; of a script, its file")},
        {"TrackFX_GetFXGUID", host_function<get_id_bytes<Track>, get_id<Track>>(
                                  "track,fx", "The effect's identifier, nil if there is none")},
        {"TrackFX_GetEnabled",
         host_function<is_enabled<Track>>("track,fx", "Whether the effect is not bypassed")},
        {"TrackFX_SetEnabled",
         host_function<set_enabled<Track>>("track,fx,enabled", "Bypasses the effect, or not")},
        {"TrackFX_GetOffline", host_function<is_offline<Track>>("track,fx", "Whether the effect is offline")},
        {"TrackFX_SetOffline",
         host_function<set_offline<Track>>("track,fx,offline", "Sets the effect offline, or online")},
        {"TrackFX_Delete",
         host_function<delete_effect<Track>>("track,fx", "Removes the effect with its envelopes")},
        {"TrackFX_AddByName",
         host_function<add_by_name>("track,fxname,recFX,instantiate",
                                    "Index of the effect of that name, -1 if there is none; none is added")},
        {"TrackFX_GetByName",
         host_function<get_by_name>("track,fxname,instantiate",
                                    "Index of the effect of that name, -1 if there is none; none is added")},
        {"TakeFX_GetCount", host_function<count_effects<Take>>("take", "Number of the take's effects")},
        {"TakeFX_GetFXName", host_function<get_name<Take>>("take,fx,bufOut,bufOut_sz",
                                                           "The effect's name; of a script, its file")},
        {"TakeFX_GetFXGUID", host_function<get_id_bytes<Take>, get_id<Take>>(
                                 "take,fx", "The effect's identifier, nil if there is none")},
        {"TakeFX_GetEnabled",
         host_function<is_enabled<Take>>("take,fx", "Whether the effect is not bypassed")},
        {"TakeFX_SetEnabled",
         host_function<set_enabled<Take>>("take,fx,enabled", "Bypasses the effect, or not")},
        {"TakeFX_GetOffline", host_function<is_offline<Take>>("take,fx", "Whether the effect is offline")},
        {"TakeFX_SetOffline",
         host_function<set_offline<Take>>("take,fx,offline", "Sets the effect offline, or online")},
        {"TakeFX_Delete", host_function<delete_effect<Take>>("take,fx", "Removes the effect")},
    };
    return table;
}

} // namespace headless::functions
