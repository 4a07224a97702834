#pragma once
// How the members of a property that find their object by number call the member that takes the object.

#include "host_api/failure.hpp"

#include <type_traits>

namespace mk_api {

/// The objects among which a number counts. The values are those of `trackType` and `type` in the API.
enum class Scope : int { all = 0, selected = 1 };

/// What a property does if there is no such object: fail at once, or pass null to the host.
enum class Missing { fails, goes_on };

/// Calls a property's member on the object that was found, which may be null.
template <class Object, class R, class... A>
R on_object(Object* object, Missing rule, R (*member)(Object*, A...), std::type_identity_t<A>... rest) {
    return object || rule == Missing::goes_on ? member(object, rest...) : failure<R>;
}

} // namespace mk_api
