#pragma once
// Parses the definition text of a function: what a script passes, what it gets back, and what the bridge
// supplies in between (headless/workstation/script_call.hpp explains the rules for names).

#include <string_view>
#include <vector>

namespace headless::script {

enum class ValueKind {
    nothing,
    integer,
    boolean,
    number,
    text,
    handle, ///< of a host object, by `type`
    array,  ///< of numbers that the function writes to
    size,   ///< of the string or array before it
    other   ///< unknown to the bridge: passed as null
};

enum class Direction { in, out, in_out };

struct Parameter {
    std::string_view type; ///< as declared: "MediaTrack*"
    std::string_view written_name;
    std::string_view name; ///< without its suffixes
    ValueKind kind = ValueKind::other;
    Direction direction = Direction::in;
    bool by_address = false; ///< an int, bool or double that is passed by its address
    bool is_optional = false;
    bool needs_big_buffer = false;

    /// Whether the parameter is a project: without one it means the active project.
    bool is_project() const { return type == "ReaProject*"; }
    bool is_argument() const { return kind != ValueKind::size && direction != Direction::out; }
    bool is_result() const { return kind != ValueKind::size && direction != Direction::in; }
};

struct ParsedDefinition {
    std::string_view result_type;
    ValueKind result = ValueKind::nothing;
    std::vector<Parameter> parameters;
    std::string_view help;
};

/// Parses the four NUL-terminated strings at `text`, which must outlive the result. Missing names are empty.
ParsedDefinition parse_definition(const char* text);

} // namespace headless::script
