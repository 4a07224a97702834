#pragma once
// JSON values from text and back. A value may nest 1,000 levels deep: what walks it recurses, and so must end
// before the stack does.

#include "host/export.hpp"

#include <nlohmann/json.hpp>

#include <string>

namespace mk_api::string {

using json = nlohmann::json;

/// Parses a JSON text without comments. @returns 0, or 1 with `objOut` as it was
MK_EXPORT int Json_Deserialize(std::string jsonStr, json& objOut);

/// Writes a value as one line without blanks, keys in byte order, non-ASCII letters as they are.
/// @returns 0, or 1 with `jsonStrOut` as it was when a text in it is not valid UTF-8
MK_EXPORT int Json_Serialize(const json& obj, std::string& jsonStrOut);

} // namespace mk_api::string
