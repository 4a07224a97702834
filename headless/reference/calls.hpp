#pragma once
// The call of a function in each language, as one line.

#include "headless/reference/catalogue.hpp"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace headless::reference {

/// The parts, with the separator between them.
std::string join(const std::vector<std::string>& parts, std::string_view separator);

/// What `describe` gives for each chosen parameter.
std::vector<std::string>
describe_parameters(const script::ParsedDefinition& definition, bool (script::Parameter::*chosen)() const,
                    const std::function<std::string(const script::Parameter&)>& describe);

/// A type as Lua scripts see it: "integer", "MediaTrack", "TrackDetail[]".
std::string lua_type_name(script::ValueKind kind, std::string_view type);

/// "boolean, string buf = reaper.GetTrackName(MediaTrack track)"
std::string lua_call(const CatalogueEntry& function);

/// "integer = array.get_alloc()"
std::string method_call(const CatalogueEntry& method);

/// "bool py_GetTrackItemList(ReaProject* project, unsigned long long* trackListOut)"
std::string c_prototype(const CatalogueEntry& function);

/// "Track (MediaTrack), Depth (integer)"
std::string field_list(const CatalogueEntry& record);

/// The help without the mark that only the workstation's own list uses.
std::string help_of(const script::ParsedDefinition& definition);

} // namespace headless::reference
