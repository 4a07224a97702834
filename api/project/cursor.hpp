#pragma once
// The position that a project is at: the play position while the transport runs, else the edit cursor. All
// functions return true; a null project is the current one.

#include "host/export.hpp"
#include "host/host_types.hpp"

namespace mk_api::cursol {

/// The position in seconds.
MK_EXPORT bool GetPlayCursorPosition(ReaProject* project, double* positionOut);

/// Moves the edit cursor, and the view and the playback with it.
/// @param positionType  0: `seconds` counts from the project's start; any other: from its end
/// @param positionOut   the position then, read as above
MK_EXPORT bool SetPlayCursorPosition(ReaProject* project, int positionType, double seconds,
                                     double* positionOut);

/// The same in frames at the project's rate.
/// @param frameOut  the frame moved to, reckoned from the seconds when it counts from the end
MK_EXPORT bool SetPlayCursorPositionFrame(ReaProject* project, int positionType, int frame, int* frameOut);

} // namespace mk_api::cursol
