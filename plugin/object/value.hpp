#pragma once
// The values that are passed to and from the fields of a record.

#include <string>
#include <variant>

namespace mk_object {

/// Callers test the index, so the order of the alternatives is fixed. A `MediaTrack*` is passed as `void*`.
using mk_Value = std::variant<int, double, bool, std::string, void*>;

} // namespace mk_object
