#pragma once
// How the members of a property that find their item by number call its `Item` member.

#include "api/media/lookup.hpp"
#include "api/track/on_object.hpp"

#include <type_traits>

namespace mk_api::mediaItem {

/// Calls a property's `Item` member on the item with that number in the project or among the selected items.
template <class R, class... A>
R on_item(Scope scope, Missing rule, R (*item_member)(MediaItem*, A...), ReaProject* project, int number,
          std::type_identity_t<A>... rest) {
    return on_object(GetMediaItemSelect(project, number, static_cast<int>(scope)), rule, item_member,
                     rest...);
}

/// The same for the item with that number on a track, which is found among all tracks or the selected ones.
template <class R, class... A>
R on_track_item(Scope scope, Missing rule, R (*item_member)(MediaItem*, A...), ReaProject* project,
                int track_number, int item_number, std::type_identity_t<A>... rest) {
    return on_object(GetMediaTrackItemSelect(project, track_number, item_number, static_cast<int>(scope)),
                     rule, item_member, rest...);
}

} // namespace mk_api::mediaItem
