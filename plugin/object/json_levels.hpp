#pragma once
// How deep a JSON value may nest. Copying, writing and pushing a value recurse, so the depth is limited to
// protect the stack.

#include <nlohmann/json.hpp>

#include <algorithm>

namespace mk_object {

inline constexpr int max_json_levels = 1000;

/// Counts the levels of arrays and objects in a value. Returns `most` + 1 for anything deeper than `most`.
inline int json_levels(const nlohmann::json& value, int most = max_json_levels) {
    int inner_levels = 0;
    if (!value.is_structured())
        return 0;
    if (most > 0)
        for (const nlohmann::json& inner : value)
            inner_levels = std::max(inner_levels, json_levels(inner, most - 1));
    return 1 + inner_levels;
}

} // namespace mk_object
