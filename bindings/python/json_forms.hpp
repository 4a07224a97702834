#pragma once
// Lists as they travel in JSON between Python and the logic.

#include "host/host_types.hpp"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace json_utility {

using json = nlohmann::json;

/// The items of an array of objects with the key "MediaItem*" and the item's address; what is no object, and
/// other keys, are passed over. Empty for anything but an array.  @throws json::type_error for an address
/// that is no number
template <class T>
std::vector<T> get_array(json& value);

template <>
std::vector<MediaItem*> get_array<MediaItem*>(json& value);

/// The texts of an array; what is no text is passed over. Empty for anything but an array.
template <>
std::vector<std::string> get_array<std::string>(json& value);

} // namespace json_utility

namespace python_utility {

/// An array of objects with the single key "string".
nlohmann::json array_to_typeJson(std::vector<std::string> list);

} // namespace python_utility
