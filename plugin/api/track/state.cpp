#include "api/track/state.hpp"

#include "api/track/on_track.hpp"
#include "common/native_color.hpp"
#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"

namespace MK_FELSPAR {

using mk_api::Missing;
using mk_api::Scope;
using mk_api::track::GetTrackCountSelect;
using mk_api::track::GetTrackItemSelect;
using mk_api::track::on_track;

namespace {

/// A track attribute that is on or off. 0 is off, and `is_on` says which values are on. Other values are
/// neither.
struct Switch {
    const char* key;
    bool (*is_on)(double value);
};

constexpr Switch mute{"B_MUTE", [](double value) { return value == 1.0; }};
constexpr Switch solo{"I_SOLO", [](double value) { return value >= 1.0; }};

bool read(const Switch& property, MediaTrack* track, bool* out) {
    const double value = call(GetMediaTrackInfo_Value, track, property.key);
    const bool on = property.is_on(value);
    if (on || value == 0.0)
        put(out, on);
    return on;
}

bool write(const Switch& property, MediaTrack* track, bool on) {
    return call(SetMediaTrackInfo_Value, track, property.key, on ? 1.0 : 0.0);
}

bool switch_all_off(const Switch& property, ReaProject* project) {
    int count = 0;
    GetTrackCountSelect(project, static_cast<int>(Scope::all), &count);
    for (int number = 0; number < count; ++number)
        write(property, GetTrackItemSelect(project, number, static_cast<int>(Scope::all)), false);
    return true;
}

bool select(MediaTrack* track, bool selected) {
    call(SetTrackSelected, track, selected);
    return true;
}

} // namespace

bool GetTrackItemMute(MediaTrack* track, bool* muteOut) { return read(mute, track, muteOut); }
bool GetTrackIdMute(ReaProject* projID, int trackId, bool* muteOut) {
    return on_track(Scope::all, Missing::fails, GetTrackItemMute, projID, trackId, muteOut);
}
bool GetSelectedTrackIdMute(ReaProject* projID, int selectTrackId, bool* muteOut) {
    return on_track(Scope::selected, Missing::fails, GetTrackItemMute, projID, selectTrackId, muteOut);
}
bool SetTrackItemMute(MediaTrack* track, bool setMute) { return write(mute, track, setMute); }
bool SetTrackIdMute(ReaProject* projID, int trackID, bool setMute) {
    return on_track(Scope::all, Missing::goes_on, SetTrackItemMute, projID, trackID, setMute);
}
bool SetSelectedTrackIdMute(ReaProject* projID, int selectTrackID, bool setMute) {
    return on_track(Scope::selected, Missing::goes_on, SetTrackItemMute, projID, selectTrackID, setMute);
}
bool SetTrackAllMuteOFF(ReaProject* projID) { return switch_all_off(mute, projID); }

bool GetTrackItemSolo(MediaTrack* track, bool* soloOut) { return read(solo, track, soloOut); }
bool GetTrackIdSolo(ReaProject* projID, int trackID, bool* soloOut) {
    return on_track(Scope::all, Missing::goes_on, GetTrackItemSolo, projID, trackID, soloOut);
}
bool GetSelectedTrackIdSolo(ReaProject* projID, int selectTrackID, bool* soloOut) {
    return on_track(Scope::selected, Missing::goes_on, GetTrackItemSolo, projID, selectTrackID, soloOut);
}
bool SetTrackItemSolo(MediaTrack* track, bool setSolo) { return write(solo, track, setSolo); }
bool SetTrackIdSolo(ReaProject* projID, int trackID, bool setSolo) {
    return on_track(Scope::all, Missing::goes_on, SetTrackItemSolo, projID, trackID, setSolo);
}
bool SetSelectedTrackIdSolo(ReaProject* projID, int selectTrackID, bool setSolo) {
    return on_track(Scope::selected, Missing::goes_on, SetTrackItemSolo, projID, selectTrackID, setSolo);
}
bool SetTrackAllSoloOFF(ReaProject* projID) { return switch_all_off(solo, projID); }

bool GetTrackItemColor(MediaTrack* track, int* colorOut, int* rOut, int* gOut, int* bOut) {
    const int color = call(GetTrackColor, track);
    int r = 0;
    int g = 0;
    int b = 0;
    call(ColorFromNative, color, &r, &g, &b);
    put(colorOut, color);
    put(rOut, r);
    put(gOut, g);
    put(bOut, b);
    return true;
}
bool GetTrackIdColor(ReaProject* projID, int trackID, int* colorOut, int* rOut, int* gOut, int* bOut) {
    return on_track(Scope::all, Missing::goes_on, GetTrackItemColor, projID, trackID, colorOut, rOut, gOut,
                    bOut);
}
bool GetSelectedTrackIdColor(ReaProject* projID, int selectTrackID, int* colorOut, int* rOut, int* gOut,
                             int* bOut) {
    return on_track(Scope::selected, Missing::goes_on, GetTrackItemColor, projID, selectTrackID, colorOut,
                    rOut, gOut, bOut);
}
bool SetTrackItemColor(MediaTrack* track, int setColor) {
    call(SetTrackColor, track, setColor | color_in_use);
    return true;
}
bool SetTrackIdColor(ReaProject* projID, int trackID, int setColor) {
    return on_track(Scope::all, Missing::goes_on, SetTrackItemColor, projID, trackID, setColor);
}
bool SetSelectedTrackIdColor(ReaProject* projID, int selectTrackID, int setColor) {
    return on_track(Scope::selected, Missing::goes_on, SetTrackItemColor, projID, selectTrackID, setColor);
}

bool SetTrackItemRGB(MediaTrack* track, int setR, int setG, int setB) {
    call(SetTrackColor, track, call(ColorToNative, setR, setG, setB));
    return true;
}
bool SetTrackIdRGB(ReaProject* projID, int trackID, int setR, int setG, int setB) {
    return on_track(Scope::all, Missing::goes_on, SetTrackItemRGB, projID, trackID, setR, setG, setB);
}
bool SetSelectedTrackIdRGB(ReaProject* projID, int selectTrackID, int setR, int setG, int setB) {
    return on_track(Scope::selected, Missing::goes_on, SetTrackItemRGB, projID, selectTrackID, setR, setG,
                    setB);
}

bool SetTrackIdSelected(ReaProject* projID, int trackID, bool setSelectType) {
    return on_track(Scope::all, Missing::fails, select, projID, trackID, setSelectType);
}
bool SetTrackItemOnlySelected(MediaTrack* track) {
    if (!track)
        return false;
    call(SetOnlyTrackSelected, track);
    return true;
}
bool SetTrackIdOnlySelected(ReaProject* projID, int trackID) {
    return on_track(Scope::all, Missing::fails, SetTrackItemOnlySelected, projID, trackID);
}

} // namespace MK_FELSPAR
