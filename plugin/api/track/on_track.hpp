#pragma once
// What the operations on tracks share: how the `Id` and `SelectedId` members of a property call its `Item`
// member, and the project of a track.

#include "api/track/lookup.hpp"
#include "api/track/on_object.hpp"
#include "host_api/host_functions.hpp"
#include "utility/numbers.hpp"

#include <type_traits>

namespace mk_api::track {

/// Calls a property's `Item` member on the track with that number.
template <class R, class... A>
R on_track(Scope scope, Missing rule, R (*item_member)(MediaTrack*, A...), ReaProject* project, int number,
           std::type_identity_t<A>... rest) {
    return on_object(GetTrackItemSelect(project, number, static_cast<int>(scope)), rule, item_member,
                     rest...);
}

/// Returns a track's project, as the host stores it.
inline ReaProject* project_of(MediaTrack* track) {
    return handle_from_value<ReaProject>(call(GetMediaTrackInfo_Value, track, "P_PROJECT"));
}

} // namespace mk_api::track
