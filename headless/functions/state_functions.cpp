// Host functions that get and set the state of objects as a text in the form of the project file.

#include "headless/functions/adapter.hpp"
#include "headless/functions/tables.hpp"
#include "headless/rpp/state.hpp"
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
    };
    return table;
}

} // namespace headless::functions
