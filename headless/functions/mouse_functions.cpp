// Host functions about the mouse and what is shown at a point of the screen. There is neither here.

#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

DEFINITION_TYPE_WORD(MediaItem_Take**)

namespace headless::functions {
namespace {

constexpr int nothing = -1;

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

} // namespace

std::span<const workstation::HostFunction> mouse_functions() {
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
    };
    return table;
}

} // namespace headless::functions
