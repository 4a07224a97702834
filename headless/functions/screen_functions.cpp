// Host functions about the window, what has the focus, and devices. There is no window here, so they answer as a
// workstation does whose window shows nothing.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

namespace headless::functions {
namespace {

constexpr int nothing = -1;

template <class... A>
void do_nothing(A...) {}

int get_cursor_context(Workstation& workstation) { return workstation.session.cursor_context; }

int get_last_cursor_context(Workstation& workstation, bool) { return get_cursor_context(workstation); }

void set_cursor_context(Workstation& workstation, int mode, project::Envelope* envelope) {
    constexpr int tracks = 0;
    constexpr int envelopes = 2;
    if (mode >= tracks && mode <= envelopes)
        workstation.session.cursor_context = mode;
    if (mode == envelopes && envelope)
        workstation.session.selected_envelope = Workstation::handle(*envelope);
}

project::Track* get_mixer_scroll(Workstation& workstation) {
    project::Track* track = workstation.live(workstation.session.leftmost_in_mixer);
    return track ? track : workstation.project().track(0);
}

project::Track* set_mixer_scroll(Workstation& workstation, project::Track* leftmost) {
    workstation.session.leftmost_in_mixer = leftmost ? Workstation::handle(*leftmost) : nullptr;
    return get_mixer_scroll(workstation);
}

int select_color(void*, int* color) {
    put(color, 0);
    return 0;
}

void* no_window() { return nullptr; }

project::Take* take_of_editor(void*) { return nullptr; }

int mode_of_editor(void*) { return nothing; }

int focused_effect(int* track, int* item, int* effect) {
    put(track, 0);
    put(item, 0);
    put(effect, 0);
    return 0;
}

bool touched_effect(int* track, int* effect, int* parameter) {
    put(track, 0);
    put(effect, 0);
    put(parameter, 0);
    return false;
}

bool touched_or_focused_effect(int, int* track, int* item, int* take, int* effect, int* parameter) {
    put(item, 0);
    put(take, 0);
    return touched_effect(track, effect, parameter);
}

int count_devices() { return 0; }

bool get_device_name(int, char* name, int name_size) {
    workstation::copy_text("", name, name_size);
    return false;
}

} // namespace

std::span<const workstation::HostFunction> screen_functions() {
    constexpr const char* draws_nothing = "Nothing is drawn here: does nothing";
    static const workstation::HostFunction table[] = {
        {"GetCursorContext",
         host_function<get_cursor_context>("", "0 tracks, 1 items, 2 envelopes; 1 until it is set")},
        {"GetCursorContext2", host_function<get_last_cursor_context>(
                                  "want_last_valid", "0 tracks, 1 items, 2 envelopes; 1 until it is set")},
        {"SetCursorContext", host_function<set_cursor_context>(
                                 "mode,envInOptional", "Sets what GetCursorContext gives: 0, 1 or 2")},
        {"SetMixerScroll",
         host_function<set_mixer_scroll>("leftmosttrack", "Sets and returns the first track of the mixer")},
        {"GetMixerScroll", host_function<get_mixer_scroll>("", "The first track of the mixer")},
        {"TrackCtl_SetToolTip",
         host_function<do_nothing<const char*, int, int, bool>>("fmt,xpos,ypos,topmost", draws_nothing)},
        {"CSurf_OnScroll", host_function<do_nothing<int, int>>("xdir,ydir", draws_nothing)},
        {"CSurf_OnZoom", host_function<do_nothing<int, int>>("xdir,ydir", draws_nothing)},
        {"CSurf_SetTrackListChange", host_function<do_nothing<>>("", draws_nothing)},
        {"ThemeLayout_RefreshAll", host_function<do_nothing<>>("", draws_nothing)},
        {"TrackList_UpdateAllExternalSurfaces", host_function<do_nothing<>>("", draws_nothing)},
        {"UpdateItemInProject", host_function<do_nothing<const project::Item&>>("item", draws_nothing)},
        {"GR_SelectColor",
         host_function<select_color>("hwndOptional,colorOut", "There is no window here: cancelled, 0")},
        {"GetMainHwnd", host_function<no_window>("", "There is no window here: nil")},
        {"MIDIEditor_GetActive", host_function<no_window>("", "There is no editor here: nil")},
        {"MIDIEditor_GetTake", host_function<take_of_editor>("midieditor", "There is no editor here: nil")},
        {"MIDIEditor_GetMode", host_function<mode_of_editor>("midieditor", "There is no editor here: -1")},
        {"GetFocusedFX", host_function<focused_effect>("tracknumberOut,itemnumberOut,fxnumberOut",
                                                       "No effect has the focus here: 0")},
        {"GetFocusedFX2", host_function<focused_effect>("tracknumberOut,itemnumberOut,fxnumberOut",
                                                        "No effect has the focus here: 0")},
        {"GetLastTouchedFX", host_function<touched_effect>("tracknumberOut,fxnumberOut,paramnumberOut",
                                                           "No effect is ever touched here: false")},
        {"GetTouchedOrFocusedFX",
         host_function<touched_or_focused_effect>("mode,trackidxOut,itemidxOut,takeidxOut,fxidxOut,parmOut",
                                                  "No effect is ever touched here: false")},
        {"GetNumMIDIInputs", host_function<count_devices>("", "There are no devices here: 0")},
        {"GetNumMIDIOutputs", host_function<count_devices>("", "There are no devices here: 0")},
        {"GetMIDIInputName",
         host_function<get_device_name>("dev,nameout,nameout_sz", "There are no devices here: false")},
        {"GetMIDIOutputName",
         host_function<get_device_name>("dev,nameout,nameout_sz", "There are no devices here: false")},
    };
    return table;
}

} // namespace headless::functions
