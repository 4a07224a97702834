#pragma once
// The current position of a project: the play position while the transport runs, otherwise the edit cursor.
// All functions return true. A null project is the current one.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"

namespace mk_api::cursol {

/// The position in seconds.
MK_EXPORT bool GetPlayCursorPosition(ReaProject* project, double* positionOut);

/// Moves the edit cursor, and the view and playback with it.
/// @param positionType  0: `seconds` counts from the project's start; any other value: from its end
/// @param positionOut   the position after the move, read as above
MK_EXPORT bool SetPlayCursorPosition(ReaProject* project, int positionType, double seconds,
                                     double* positionOut);

/// The same in frames at the project's rate.
/// @param frameOut  the frame moved to, computed from the seconds if it counts from the end
MK_EXPORT bool SetPlayCursorPositionFrame(ReaProject* project, int positionType, int frame, int* frameOut);

} // namespace mk_api::cursol
