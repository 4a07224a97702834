#pragma once
// The colours of items and takes. A project file says in which order their bytes are, which depends on the system
// that has set them.

#include "common/native_color.hpp"
#include "headless/rpp/properties.hpp"

#include <string>

namespace headless::functions {

/// The object's colour in the order of this host, 0 for none.
/// @param place  of the colour in the object's lines; the word after it names the lowest byte
/// @param color  as it stands there, or would
template <class T>
int native_color(const T& object, rpp::FieldPlace place, int color) {
    const std::string order = rpp::text_of(object, {place.token, place.word + 1});
    const bool is_native = order.empty() || order == native_byte_order;
    return used_color(is_native ? color : with_swapped_bytes(color));
}

} // namespace headless::functions
