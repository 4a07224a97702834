#pragma once
// The lines that objects have in the project file, in the order in which the workstation writes them.

#include "headless/chunk/lines.hpp"

#include <cstddef>
#include <span>
#include <string_view>

namespace headless::rpp {

/// A line with the values that it has by default.
struct Form {
    consteval Form(const char* line_text, bool standard = false)
        : line(line_text), token(line.substr(0, line.find(' '))), is_standard(standard) {}

    std::string_view line;
    std::string_view token;
    bool is_standard; ///< new objects have it; the others are written only for other values
};

/// The head of the projects that this program makes. A workstation that saves them puts its own platform there.
/// There is no time of saving: the same project gives the same bytes.
inline constexpr std::string_view own_head = R"(<REAPER_PROJECT 0.1 "6.19/felspar" 0)";

using Forms = std::span<const Form>;

extern const Forms project_forms;
extern const Forms track_forms;
extern const Forms item_forms;
extern const Forms take_forms; ///< of the first take; the others have TAKEVOLPAN instead of VOLPAN
extern const Forms envelope_forms;

/// The lines of a new object.
chunk::Lines standard_lines(Forms forms);

/// The line of that token with its default values; empty for an unknown token.
std::string_view default_line(Forms forms, std::string_view token);

/// Where a line of that token is to be inserted.
std::size_t place_for(const chunk::Lines& lines, Forms forms, std::string_view token);

} // namespace headless::rpp
