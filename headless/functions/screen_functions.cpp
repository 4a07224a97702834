// Host functions about the window, the mouse and what has the focus. There is no window here, so they answer as
// a workstation does whose window shows nothing.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

DEFINITION_TYPE_WORD(MediaItem_Take**)

namespace headless::functions {
namespace {

constexpr int nothing = -1;

template <class... A>
void do_nothing(A...) {}

void get_mouse_position(int* x, int* y) {
    put(x, 0);
    put(y, 0);
}

project::Track* track_from_point(int, int, int* info) {
    put(info, 0);
    return nullptr;
}

project::Track* thing_from_point(int, int, char* info, int info_size) {
    workstation::copy_text("", info, info_size);
    return nullptr;
}

project::Item* item_from_point(int, int, bool, MediaItem_Take** take) {
    put(take, nullptr);
    return nullptr;
}

void mouse_context(char* window, int window_size, char* segment, int segment_size, char* details,
                   int details_size) {
    workstation::copy_text("unknown", window, window_size);
    workstation::copy_text("", segment, segment_size);
    workstation::copy_text("", details, details_size);
}

template <class Object>
Object* no_object() {
    return nullptr;
}

project::Envelope* mouse_context_envelope(bool* is_of_take) {
    put(is_of_take, false);
    return nullptr;
}

double no_position() { return nothing; }

double position_at_mouse(bool) { return nothing; }

project::Track* track_at_mouse(int* context, double* position) {
    put(context, nothing);
    put(position, nothing);
    return nullptr;
}

template <class Object>
Object* object_at_mouse(double* position) {
    put(position, nothing);
    return nullptr;
}

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
    constexpr const char* no_mouse = "There is no mouse here: nil";
    static const workstation::HostFunction table[] = {
        {"GetMousePosition", host_function<get_mouse_position>("xOut,yOut", "There is no mouse here: 0, 0")},
        {"GetTrackFromPoint", host_function<track_from_point>("screen_x,screen_y,infoOutOptional",
                                                              "There is no window here: nil")},
        {"GetThingFromPoint", host_function<thing_from_point>("screen_x,screen_y,infoOut,infoOut_sz",
                                                              "There is no window here: nil")},
        {"GetItemFromPoint", host_function<item_from_point>("screen_x,screen_y,allow_locked,takeOutOptional",
                                                            "There is no window here: nil")},
        {"BR_GetMouseCursorContext",
         host_function<mouse_context>(
             "windowOut,windowOut_sz,segmentOut,segmentOut_sz,detailsOut,detailsOut_sz",
             "There is no mouse here: \"unknown\"")},
        {"BR_GetMouseCursorContext_Item", host_function<no_object<project::Item>>("", no_mouse)},
        {"BR_GetMouseCursorContext_Take", host_function<no_object<project::Take>>("", no_mouse)},
        {"BR_GetMouseCursorContext_Track", host_function<no_object<project::Track>>("", no_mouse)},
        {"BR_GetMouseCursorContext_Envelope",
         host_function<mouse_context_envelope>("takeEnvelopeOut", no_mouse)},
        {"BR_GetMouseCursorContext_Position", host_function<no_position>("", "There is no mouse here: -1")},
        {"BR_PositionAtMouseCursor",
         host_function<position_at_mouse>("checkRuler", "There is no mouse here: -1")},
        {"BR_TrackAtMouseCursor", host_function<track_at_mouse>("contextOut,positionOut", no_mouse)},
        {"BR_ItemAtMouseCursor", host_function<object_at_mouse<project::Item>>("positionOut", no_mouse)},
        {"BR_TakeAtMouseCursor", host_function<object_at_mouse<project::Take>>("positionOut", no_mouse)},
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
