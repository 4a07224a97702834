#pragma once
// How deep a JSON value may nest: what copies, writes or pushes one recurses, and so must end before the
// stack does.

#include <nlohmann/json.hpp>

#include <algorithm>

namespace mk_object {

inline constexpr int most_json_levels = 1000;

/// Levels of arrays and objects in a value; one more than the most for all that is deeper.
inline int json_levels(const nlohmann::json& value, int most = most_json_levels) {
    int inner_levels = 0;
    if (!value.is_structured())
        return 0;
    if (most > 0)
        for (const nlohmann::json& inner : value)
            inner_levels = std::max(inner_levels, json_levels(inner, most - 1));
    return 1 + inner_levels;
}

} // namespace mk_object
