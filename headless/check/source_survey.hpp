#pragma once
// Finds in a Lua source what it uses of the tables `reaper` and `gfx`, through aliases as well: as
// `local r = reaper` for a table, `local GetTrack = reaper.GetTrack` for a function.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace headless::check {

/// An argument that is a single text or number; otherwise empty.
using LiteralArgument = std::optional<std::string>;

/// One place that calls a function, or mentions it.
struct FunctionUse {
    std::string table; ///< "reaper" or "gfx"
    std::string name;
    int line = 0;
    bool is_optional = false; ///< only asked for, or called where it has been asked for
    bool is_call = false;
    std::vector<LiteralArgument> arguments{}; ///< of a call
};

/// In the order of the source, without functions that the script itself adds to the table.
std::vector<FunctionUse> survey_source(std::string_view source);

} // namespace headless::check
