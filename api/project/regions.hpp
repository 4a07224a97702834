#pragma once
// Regions and markers by their place in the host's enumeration, which counts both from 0 in the order of
// time. The number that a user sees is another one, which `GetRegionMarkerIndex` gives. All functions return
// true: an index past the end leaves the outputs as they were, and changes nothing.

#include "host/export.hpp"
#include "host/host_types.hpp"

namespace MK_FELSPAR {

/// The displayed number.
MK_EXPORT bool GetRegionMarkerIndex(ReaProject* projID, int regionID, int* indexOut);

/// Start and end in seconds; a marker's end is as the host gives it.
MK_EXPORT bool GetRegionMarkerPosition(ReaProject* projID, int regionID, double* startPosOut,
                                       double* endPosOut);

/// The name, cut to `nameOut_sz` - 1 bytes; empty past the end.
MK_EXPORT bool GetRegionMarkerName(ReaProject* projID, int regionID, char* nameOut, int nameOut_sz);

/// The native colour.
MK_EXPORT bool GetRegionMarkerColor(ReaProject* projID, int regionID, int* colorOut);

/// Moves an entry, which keeps its kind, colour and the first 1,023 bytes of its name.
MK_EXPORT bool SetRegionMarkerPosition(ReaProject* projID, int regionID, double setStartPos,
                                       double setEndPos);

/// Sets a native colour and marks it as in use. The entry keeps the first 1,023 bytes of its name.
MK_EXPORT bool SetRegionMarkerColor(ReaProject* projID, int regionID, int setColor);
MK_EXPORT bool SetRegionMarkerName(ReaProject* projID, int regionID, const char* setName);

/// Adds a region, never a marker, and gives its displayed number.
/// @param setRegionIndex  the displayed number wished for, -1 for any
MK_EXPORT bool AddRegionMarker(ReaProject* projID, double setStartPos, double setEndPos, const char* setName,
                               int setRegionIndex, int setColor, int* regionIndexOut);

/// Deletes all regions; markers stay.
MK_EXPORT bool DeleteAllRegion(ReaProject* projID);

} // namespace MK_FELSPAR
