#include "api/track/lookup.hpp"

#include "api/track/on_track.hpp"
#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"

namespace mk_api::track {

MediaTrack* GetTrackItemSelect(ReaProject* projID, int trackID, int trackType) {
    switch (trackType) {
    case static_cast<int>(Scope::all):
        return call(GetTrack, projID, trackID);
    case static_cast<int>(Scope::selected):
        return call(GetSelectedTrack, projID, trackID);
    default:
        return nullptr;
    }
}

bool GetTrackCountSelect(ReaProject* projID, int trackType, int* countOut) {
    put(countOut, 0);
    if (trackType == static_cast<int>(Scope::selected))
        put(countOut, call(CountSelectedTracks2, projID, true));
    else if (trackType == static_cast<int>(Scope::all))
        put(countOut, call(CountTracks, projID));
    return true;
}

} // namespace mk_api::track
