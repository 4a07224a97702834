#include "api/project/regions.hpp"

#include "common/native_color.hpp"
#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"
#include "utility/mk_utility.hpp"

namespace MK_FELSPAR {
namespace {

/// A marker or a region.
struct Marker {
    bool is_region = false;
    const char* name = ""; // the host's
    double start_seconds = 0.0;
    double end_seconds = 0.0;
    int displayed_number = 0;
    int color = 0;
};

Marker read(ReaProject* project, int index) {
    Marker marker;
    call(EnumProjectMarkers3, project, index, &marker.is_region, &marker.start_seconds, &marker.end_seconds,
         &marker.name, &marker.displayed_number, &marker.color);
    return marker;
}

bool write(ReaProject* project, const Marker& marker) {
    call(SetProjectMarker3, project, marker.displayed_number, marker.is_region, marker.start_seconds,
         marker.end_seconds, marker.name, marker.color);
    return true;
}

/// Requests the outputs that are not null, and the name.
const char* get(ReaProject* project, int index, double* start, double* end, int* displayed_number,
                int* color) {
    bool is_region = true;
    const char* name = "";
    call(EnumProjectMarkers3, project, index, &is_region, start, end, &name, displayed_number, color);
    return name;
}

/// Keeps the name while the marker is written back, because the host's text may not live that long.
class KeptName {
public:
    explicit KeptName(Marker& marker) {
        mk_utility::strcpy(buffer_, sizeof buffer_, text_or_empty(marker.name));
        marker.name = buffer_;
    }

private:
    char buffer_[1024];
};

} // namespace

bool GetRegionMarkerIndex(ReaProject* projID, int regionID, int* indexOut) {
    get(projID, regionID, nullptr, nullptr, indexOut, nullptr);
    return true;
}

bool GetRegionMarkerPosition(ReaProject* projID, int regionID, double* startPosOut, double* endPosOut) {
    get(projID, regionID, startPosOut, endPosOut, nullptr, nullptr);
    return true;
}

bool GetRegionMarkerName(ReaProject* projID, int regionID, char* nameOut, int nameOut_sz) {
    const char* name = get(projID, regionID, nullptr, nullptr, nullptr, nullptr);
    mk_utility::strcpy(nameOut, nameOut_sz, text_or_empty(name));
    return true;
}

bool GetRegionMarkerColor(ReaProject* projID, int regionID, int* colorOut) {
    get(projID, regionID, nullptr, nullptr, nullptr, colorOut);
    return true;
}

bool SetRegionMarkerPosition(ReaProject* projID, int regionID, double setStartPos, double setEndPos) {
    Marker marker = read(projID, regionID);
    const KeptName kept(marker);
    marker.start_seconds = setStartPos;
    marker.end_seconds = setEndPos;
    return write(projID, marker);
}

bool SetRegionMarkerColor(ReaProject* projID, int regionID, int setColor) {
    Marker marker = read(projID, regionID);
    const KeptName kept(marker);
    marker.color = setColor | color_in_use;
    return write(projID, marker);
}

bool SetRegionMarkerName(ReaProject* projID, int regionID, const char* setName) {
    Marker marker = read(projID, regionID);
    marker.name = text_or_empty(setName);
    return write(projID, marker);
}

bool AddRegionMarker(ReaProject* projID, double setStartPos, double setEndPos, const char* setName,
                     int setRegionIndex, int setColor, int* regionIndexOut) {
    put(regionIndexOut, call(AddProjectMarker2, projID, true, setStartPos, setEndPos, text_or_empty(setName),
                             setRegionIndex, setColor | color_in_use));
    return true;
}

bool DeleteAllRegion(ReaProject* projID) {
    int markers = 0;
    int regions = 0;
    call(CountProjectMarkers, projID, &markers, &regions);
    for (int i = markers + regions - 1; i >= 0; --i) { // downward, as deletion shifts those above
        bool is_region = false;
        call(EnumProjectMarkers2, projID, i, &is_region, nullptr, nullptr, nullptr, nullptr);
        if (is_region)
            call(DeleteProjectMarkerByIndex, projID, i);
    }
    return true;
}

} // namespace MK_FELSPAR
