#pragma once
// Regions and markers by their index in the host's enumeration, which counts both from 0 in order of time.
// The number that a user sees is a different one; `GetRegionMarkerIndex` returns it. All functions return
// true. An index past the end leaves the outputs unwritten and changes nothing.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"

namespace MK_FELSPAR {

/// The displayed number.
MK_EXPORT bool GetRegionMarkerIndex(ReaProject* projID, int regionID, int* indexOut);

/// Start and end in seconds. A marker's end is whatever the host reports.
MK_EXPORT bool GetRegionMarkerPosition(ReaProject* projID, int regionID, double* startPosOut,
                                       double* endPosOut);

/// The name, cut to `nameOut_sz` - 1 bytes; empty past the end.
MK_EXPORT bool GetRegionMarkerName(ReaProject* projID, int regionID, char* nameOut, int nameOut_sz);

/// The native colour.
MK_EXPORT bool GetRegionMarkerColor(ReaProject* projID, int regionID, int* colorOut);

/// Moves a marker or region, which keeps its kind, its colour and the first 1,023 bytes of its name.
MK_EXPORT bool SetRegionMarkerPosition(ReaProject* projID, int regionID, double setStartPos,
                                       double setEndPos);

/// Sets a native colour and marks it as in use. The marker keeps the first 1,023 bytes of its name.
MK_EXPORT bool SetRegionMarkerColor(ReaProject* projID, int regionID, int setColor);
MK_EXPORT bool SetRegionMarkerName(ReaProject* projID, int regionID, const char* setName);

/// Adds a region, never a marker, and returns its displayed number in `regionIndexOut`.
/// @param setRegionIndex  the preferred displayed number, or -1 for any
MK_EXPORT bool AddRegionMarker(ReaProject* projID, double setStartPos, double setEndPos, const char* setName,
                               int setRegionIndex, int setColor, int* regionIndexOut);

/// Deletes all regions but no markers.
MK_EXPORT bool DeleteAllRegion(ReaProject* projID);

} // namespace MK_FELSPAR
