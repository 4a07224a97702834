#pragma once
// Finding a track by number, and the rule by which a property's `Id` and `SelectedId` members do what its
// `Item` member does. Numbers are zero-based positions among all tracks or among the selected ones.

#include "host/api_row.hpp"
#include "host/export.hpp"
#include "host/host_types.hpp"

#include <type_traits>

namespace mk_api::track {

/// The track of that number among all tracks (`trackType` 0) or the selected ones (1).
/// @returns null past the end, and for any other `trackType`
MK_EXPORT MediaTrack* GetTrackItemSelect(ReaProject* projID, int trackID, int trackType);

/// Counts all tracks (`trackType` 0), or the selected ones with the master track (1); any other type counts
/// 0.
/// @returns true
MK_EXPORT bool GetTrackCountSelect(ReaProject* projID, int trackType, int* countOut);

/// Among which tracks a number counts; the values are those of `trackType`.
enum class Scope : int { all = 0, selected = 1 };

/// What a property does when there is no such track: fail at once, or let the host answer for the null track.
enum class Missing { fails, goes_on };

/// Calls a property's `Item` member on the track of that number.
template <class R, class... A>
R on_track(Scope scope, Missing rule, R (*item_member)(MediaTrack*, A...), ReaProject* project, int number,
           std::type_identity_t<A>... rest) {
    MediaTrack* track = GetTrackItemSelect(project, number, static_cast<int>(scope));
    return track || rule == Missing::goes_on ? item_member(track, rest...) : failure<R>;
}

} // namespace mk_api::track
