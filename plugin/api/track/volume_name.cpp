#include "api/track/volume_name.hpp"

#include "api/track/on_track.hpp"
#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"
#include "utility/mk_utility.hpp"

#include <algorithm>

namespace mk_api::track {

bool GetTrackItemName(MediaTrack* track, char* nameOut, int nameOut_sz) {
    char name[1024] = "";
    if (!call(GetTrackName, track, name, std::clamp<int>(nameOut_sz, 0, sizeof name)))
        return false;
    mk_utility::strcpy(nameOut, nameOut_sz, name);
    return true;
}
bool GetTrackIdName(ReaProject* projID, int trackID, char* nameOut, int nameOut_sz) {
    return on_track(Scope::all, Missing::goes_on, GetTrackItemName, projID, trackID, nameOut, nameOut_sz);
}
bool GetSelectedTrackIdName(ReaProject* projID, int trackID, char* nameOut, int nameOut_sz) {
    return on_track(Scope::selected, Missing::goes_on, GetTrackItemName, projID, trackID, nameOut,
                    nameOut_sz);
}

bool SetTrackItemName(MediaTrack* track, const char* setName) {
    if (!track)
        return false;
    // The host only reads the string when it sets a name.
    return call(GetSetMediaTrackInfo_String, track, "P_NAME", const_cast<char*>(text_or_empty(setName)),
                true);
}
bool SetTrackIdName(ReaProject* projID, int trackID, const char* setName) {
    return on_track(Scope::all, Missing::fails, SetTrackItemName, projID, trackID, setName);
}
bool SetSelectedTrackIdName(ReaProject* projID, int selectTrackID, const char* setName) {
    return on_track(Scope::selected, Missing::fails, SetTrackItemName, projID, selectTrackID, setName);
}

} // namespace mk_api::track

namespace MK_FELSPAR {

using mk_api::Missing;
using mk_api::Scope;
using mk_api::track::on_track;

namespace {

double volume_db(MediaTrack* track) {
    return mk_utility::to_dB(call(GetMediaTrackInfo_Value, track, "D_VOL"));
}

} // namespace

bool GetTrackItemVolume(MediaTrack* track, double* volumeOut) {
    put(volumeOut, mk_utility::round(volume_db(track), 2));
    return true;
}
bool GetTrackIdVolume(ReaProject* projID, int trackID, double* volumeOut) {
    return on_track(Scope::all, Missing::fails, GetTrackItemVolume, projID, trackID, volumeOut);
}
bool GetSelectedTrackIdVolume(ReaProject* projID, int selectTrackID, double* volumeOut) {
    return on_track(Scope::selected, Missing::fails, GetTrackItemVolume, projID, selectTrackID, volumeOut);
}

bool SetTrackItemVolume(MediaTrack* track, double setVolume) {
    call(SetMediaTrackInfo_Value, track, "D_VOL", mk_utility::to_reaper_volume(setVolume));
    call(UpdateArrange);
    return true;
}
bool SetTrackIdVolume(ReaProject* projID, int trackID, double setVolume) {
    return on_track(Scope::all, Missing::fails, SetTrackItemVolume, projID, trackID, setVolume);
}
bool SetSelectedTrackIdVolume(ReaProject* projID, int selectTrackID, double setVolume) {
    return on_track(Scope::selected, Missing::fails, SetTrackItemVolume, projID, selectTrackID, setVolume);
}

bool SetTrackItemAddVolume(MediaTrack* track, double addVolume) {
    return SetTrackItemVolume(track, volume_db(track) + addVolume);
}
bool SetTrackIdAddVolume(ReaProject* projID, int trackID, double addVolume) {
    return on_track(Scope::all, Missing::fails, SetTrackItemAddVolume, projID, trackID, addVolume);
}
bool SetSelectedTrackIdAddVolume(ReaProject* projID, int selectTrackID, double addVolume) {
    return on_track(Scope::selected, Missing::fails, SetTrackItemAddVolume, projID, selectTrackID, addVolume);
}

} // namespace MK_FELSPAR
