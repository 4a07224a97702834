#pragma once
// Brings an object's lines up to date with its members.

#include "headless/rpp/fields.hpp"
#include "headless/rpp/forms.hpp"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace headless::rpp {

/// Writes those of the object's fields into the line that are read as another value from it.
template <class T>
void edit_fields(chunk::Text& line, const T& object, std::span<const Field<T>> fields, Forms forms) {
    const std::string token(chunk::token(line.content())); // editing moves the line's text
    for (const Field<T>& field : fields) {
        if (field.token != token)
            continue;
        const double in_file = chunk::number_at(line, field.word, field.otherwise);
        const double wanted = field.get(object);
        if (field.held(in_file) == wanted)
            continue;
        const double written = field.merged ? field.merged(in_file, wanted) : wanted;
        chunk::set_word(line, field.word, chunk::decimal(written), default_line(forms, field.token));
    }
}

using Tokens = std::vector<std::string_view>;

inline void add_tokens(Tokens& tokens, const chunk::Lines& lines) {
    for (const chunk::Node& node : lines)
        if (node.line())
            tokens.push_back(node.token());
}

inline Tokens tokens_of(const chunk::Lines& lines) {
    Tokens tokens;
    add_tokens(tokens, lines);
    return tokens;
}

/// Lines to be inserted, by the index of the node before which they come.
using InsertedLines = std::multimap<std::size_t, chunk::Text>;

/// Adds the lines of those of the object's fields that no line holds and that are not at their default.
/// @param present  the tokens of lines that exist
template <class T>
void add_missing_lines(InsertedLines& inserted, const chunk::Lines& lines, const Tokens& present,
                       const T& object, std::span<const Field<T>> fields, Forms forms) {
    std::string_view added;
    for (const Field<T>& field : fields) {
        if (field.get(object) == field.held(field.otherwise) || field.token == added ||
            std::ranges::find(present, field.token) != present.end())
            continue;
        chunk::Text line = chunk::Text::made(default_line(forms, field.token));
        edit_fields(line, object, fields, forms);
        inserted.emplace(place_for(lines, forms, field.token), std::move(line));
        added = field.token;
    }
}

} // namespace headless::rpp
