// Host functions that get and set the state of objects as a text in the form of the project file.

#include "headless/functions/adapter.hpp"
#include "headless/functions/tables.hpp"
#include "headless/rpp/state.hpp"
#include "headless/workstation/fast_strings.hpp"
#include "headless/workstation/text.hpp"

#include <string>
#include <utility>

namespace headless::functions {
namespace {

/// Returns false, and as much as there is space for, if the state does not fit.
bool give(const std::string& state, char* buffer, int size) {
    workstation::copy_text(state, buffer, size);
    return buffer && std::cmp_less(state.size(), size);
}

bool get_item_state(project::Item& item, char* buffer, int size, bool) {
    return give(rpp::state_of(item), buffer, size);
}

bool set_item_state(project::Item& item, const char* text, bool) {
    return rpp::set_state(item, workstation::to_string(text)).has_value();
}

// The master's lines are those of the project.
bool is_master(Workstation& workstation, const project::Track& track, const char* function) {
    if (&track != &track.project().master())
        return false;
    workstation.report_once({std::string(function) + ": the master has no state of its own here"});
    return true;
}

bool get_track_state(Workstation& workstation, project::Track& track, char* buffer, int size, bool) {
    return !is_master(workstation, track, "GetTrackStateChunk") && give(rpp::state_of(track), buffer, size);
}

bool set_track_state(Workstation& workstation, project::Track& track, const char* text, bool) {
    return !is_master(workstation, track, "SetTrackStateChunk") &&
           rpp::set_state(track, workstation::to_string(text)).has_value();
}

// Reads the object's state into the text, or sets it to the text.
template <class Object, class... Context>
bool get_set_state(workstation::FastString& state, bool is_set, Object& object, Context&... context) {
    if (is_set)
        return rpp::set_state(object, context..., state.text).has_value();
    state.text = rpp::state_of(object, context...);
    return true;
}

// States are whole, also where a minimal one would do.
bool get_set_object_state(Workstation& workstation, void* object, workstation::FastString& state, bool is_set,
                          bool /*is_minimal*/) {
    if (project::Track* track = workstation.live(static_cast<MediaTrack*>(object)))
        return !is_master(workstation, *track, "SNM_GetSetObjectState") &&
               get_set_state(state, is_set, *track);
    if (project::Item* item = workstation.live(static_cast<MediaItem*>(object)))
        return get_set_state(state, is_set, *item);
    if (project::Envelope* envelope = workstation.live(static_cast<TrackEnvelope*>(object)))
        return get_set_state(state, is_set, *envelope, workstation.project());
    return false;
}

} // namespace

std::span<const workstation::HostFunction> state_functions() {
    static const workstation::HostFunction table[] = {
        {"GetItemStateChunk",
         host_function<get_item_state>("item,strNeedBig,strNeedBig_sz,isundoOptional",
                                       "The item's block as in the project file, without indents")},
        {"SetItemStateChunk",
         host_function<set_item_state>("item,str,isundoOptional",
                                       "Replaces all of the item; false for a text that is no such block")},
        {"GetTrackStateChunk",
         host_function<get_track_state>("track,strNeedBig,strNeedBig_sz,isundoOptional",
                                        "The track's block as in the project file, without indents")},
        {"SetTrackStateChunk",
         host_function<set_track_state>("track,str,isundoOptional",
                                        "Replaces all of the track; false for a text that is no such block")},
        {"SNM_GetSetObjectState",
         host_function<get_set_object_state>("obj,state,setnewvalue,wantminimalstate",
                                             "Gets or sets the block of a track, an item or an envelope")},
    };
    return table;
}

} // namespace headless::functions
