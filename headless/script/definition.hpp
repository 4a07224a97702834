#pragma once
// The definition text of a function, taken apart: what a script passes, what it gets back, and what the
// bridge supplies in between (headless/host/script_form.hpp tells the rules of the names).

#include <string_view>
#include <vector>

namespace headless {

enum class ValueKind {
    nothing,
    integer,
    boolean,
    number,
    text,
    handle, ///< of the host's objects, by `type`
    array,  ///< of numbers, which the function writes to
    size,   ///< of the text or array before it
    other   ///< unknown to the bridge: null
};

enum class Direction { in, out, in_out };

struct Parameter {
    std::string_view type; ///< as declared: "MediaTrack*"
    std::string_view written_name;
    std::string_view name; ///< without its endings
    ValueKind kind = ValueKind::other;
    Direction direction = Direction::in;
    bool by_address = false; ///< an int, bool or double that is passed by its address
    bool is_optional = false;
    bool needs_big_buffer = false;

    bool is_argument() const { return kind != ValueKind::size && direction != Direction::out; }
    bool is_result() const { return kind != ValueKind::size && direction != Direction::in; }
};

struct Definition {
    std::string_view result_type;
    ValueKind result = ValueKind::nothing;
    std::vector<Parameter> parameters;
    std::string_view help;
};

/// The parts of the four NUL-terminated texts at `text`, which must outlive the result. Names that are
/// missing are empty.
Definition parse_definition(const char* text);

} // namespace headless
