#include "headless/script/definition.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace headless::script {
namespace {

std::vector<std::string_view> split(std::string_view list) {
    std::vector<std::string_view> parts;
    while (!list.empty()) {
        const std::size_t comma = std::min(list.find(','), list.size());
        parts.push_back(list.substr(0, comma));
        list.remove_prefix(std::min(comma + 1, list.size()));
    }
    return parts;
}

bool drop_ending(std::string_view& name, std::string_view ending) {
    const bool ends = name.ends_with(ending) && name.size() > ending.size();
    if (ends)
        name.remove_suffix(ending.size());
    return ends;
}

std::optional<Direction> drop_direction(std::string_view& name) {
    if (drop_ending(name, "InOut"))
        return Direction::in_out;
    if (drop_ending(name, "Out"))
        return Direction::out;
    return drop_ending(name, "In") ? std::optional(Direction::in) : std::nullopt;
}

struct TypeKind {
    std::string_view name;
    ValueKind kind;
    bool by_address = false;
};

constexpr auto type_kinds = std::to_array<TypeKind>({
    {"void", ValueKind::nothing},
    {"int", ValueKind::integer},
    {"bool", ValueKind::boolean},
    {"double", ValueKind::number},
    {"int*", ValueKind::integer, true},
    {"bool*", ValueKind::boolean, true},
    {"double*", ValueKind::number, true},
    {"char*", ValueKind::text},
    {"const char*", ValueKind::text},
    {"const char**", ValueKind::text, true},
    {"void*", ValueKind::handle},
#define HANDLE_TYPE(type, python_class) {#type "*", ValueKind::handle},
#include "common/handle_types.inc"
#undef HANDLE_TYPE
});

TypeKind find_type(std::string_view type) {
    for (const TypeKind& candidate : type_kinds)
        if (candidate.name == type)
            return candidate;
    return {type, ValueKind::other};
}

Parameter parse_parameter(std::string_view type, std::string_view name) {
    const TypeKind found = find_type(type);
    Parameter parameter{
        .type = type, .written_name = name, .name = name, .kind = found.kind, .by_address = found.by_address};
    // "NeedBig" and "Optional" come in either order.
    for (bool dropped = true; dropped;) {
        const bool big = drop_ending(parameter.name, "NeedBig");
        const bool optional = drop_ending(parameter.name, "Optional");
        parameter.needs_big_buffer |= big;
        parameter.is_optional |= optional;
        dropped = big || optional;
    }
    const bool is_pointer = type.ends_with('*');
    const auto direction = is_pointer ? drop_direction(parameter.name) : std::nullopt;
    if (direction)
        parameter.direction = *direction;
    else if (type == "char*")
        parameter.direction = Direction::in_out;
    else if (type == "double*")
        parameter.kind = ValueKind::array;
    return parameter;
}

bool is_size_of(std::string_view name, std::string_view name_before) {
    return name.size() == name_before.size() + 3 && name.starts_with(name_before) && name.ends_with("_sz");
}

} // namespace

ParsedDefinition parse_definition(const char* text) {
    std::array<std::string_view, 4> parts;
    for (std::string_view& part : parts) {
        part = text;
        text += part.size() + 1;
    }
    ParsedDefinition definition{parts[0], find_type(parts[0]).kind, {}, parts[3]};
    const auto types = split(parts[1]);
    auto names = split(parts[2]);
    names.resize(types.size());
    for (std::size_t i = 0; i < types.size(); ++i) {
        Parameter parameter = parse_parameter(types[i], names[i]);
        if (i > 0 && types[i] == "int" && is_size_of(names[i], names[i - 1]))
            parameter.kind = ValueKind::size;
        definition.parameters.push_back(parameter);
    }
    return definition;
}

} // namespace headless::script
