#pragma once
// Reads an object's members from its lines.

#include "headless/rpp/fields.hpp"
#include "headless/rpp/read_object.hpp"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace headless::rpp {

/// Reads those of the object's fields that the line has.
template <class T>
void read_fields(Reading& in, T& object, std::span<const Field<T>> fields, const chunk::Text& line) {
    const std::string_view token = chunk::token(line.content());
    for (const Field<T>& field : fields) {
        if (field.token != token)
            continue;
        const auto word = chunk::word(line.content(), field.word);
        const auto number = word ? chunk::number(word->text) : std::nullopt;
        if (word && !number)
            in.fail(line, "'" + std::string(word->text) + "' is no number");
        field.set(object, number.value_or(field.otherwise));
    }
}

template <class T>
void read_fields(Reading& in, T& object, std::span<const Field<T>> fields, const chunk::Lines& lines) {
    for (const chunk::Node& node : lines)
        if (const chunk::Text* line = node.line())
            read_fields(in, object, fields, *line);
}

} // namespace headless::rpp
