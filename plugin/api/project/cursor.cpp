#include "api/project/cursor.hpp"

#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"
#include "utility/numbers.hpp"

namespace mk_api::cursol {
namespace {

double position_of(ReaProject* project) {
    return call(GetPlayState) != 0 ? call(GetPlayPositionEx, project) : call(GetCursorPositionEx, project);
}

double from_end(ReaProject* project, double seconds) {
    call(CSurf_GoEnd);
    return position_of(project) + seconds;
}

void move_to(ReaProject* project, double seconds) { call(SetEditCurPos2, project, seconds, true, true); }

} // namespace

bool GetPlayCursorPosition(ReaProject* project, double* positionOut) {
    put(positionOut, position_of(project));
    return true;
}

bool SetPlayCursorPosition(ReaProject* project, int positionType, double seconds, double* positionOut) {
    move_to(project, positionType == 0 ? seconds : from_end(project, seconds));
    return GetPlayCursorPosition(project, positionOut);
}

bool SetPlayCursorPositionFrame(ReaProject* project, int positionType, int frame, int* frameOut) {
    bool drop_frame = false;
    const double rate = call(TimeMap_curFrameRate, project, &drop_frame);
    const double seconds = frame / rate;
    if (positionType == 0) {
        move_to(project, seconds);
        put(frameOut, frame);
        return true;
    }
    const double target = from_end(project, seconds);
    move_to(project, target);
    put(frameOut, frame_at(rate, target));
    return true;
}

} // namespace mk_api::cursol
