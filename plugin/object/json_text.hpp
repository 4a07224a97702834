#pragma once
// Converts JSON text to values and back. A value may nest 1,000 levels deep: code that walks a value
// recurses, so the depth is limited to protect the stack.

#include "host_api/export.hpp"

#include <nlohmann/json.hpp>

#include <string>

namespace mk_api::string {

using json = nlohmann::json;

/// Parses a JSON text without comments.
/// @returns 0, or 1 with `objOut` unchanged if the text is invalid or nests too deeply
MK_EXPORT int Json_Deserialize(std::string jsonStr, json& objOut);

/// Writes a value as one line without spaces, with keys in byte order and non-ASCII characters unescaped.
/// @returns 0, or 1 with `jsonStrOut` unchanged if a string is not valid UTF-8 or the value nests too deeply
MK_EXPORT int Json_Serialize(const json& obj, std::string& jsonStrOut);

} // namespace mk_api::string
