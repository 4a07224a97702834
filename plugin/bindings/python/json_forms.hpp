#pragma once
// The JSON form of lists passed between Python and the logic.

#include "host_api/host_types.hpp"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace json_utility {

using json = nlohmann::json;

/// Returns the items of an array of objects with the key "MediaItem*" and the item's address. Elements that
/// are not objects, and other keys, are skipped. Returns nothing for a value that is not an array.
/// @throws json::type_error for an address that is not a number
template <class T>
std::vector<T> get_array(json& value);

template <>
std::vector<MediaItem*> get_array<MediaItem*>(json& value);

/// Returns the strings of an array, skipping other elements. Returns nothing for a value that is not an
/// array.
template <>
std::vector<std::string> get_array<std::string>(json& value);

} // namespace json_utility

namespace python_utility {

/// Returns an array of objects with the single key "string".
nlohmann::json array_to_typeJson(std::vector<std::string> list);

} // namespace python_utility
