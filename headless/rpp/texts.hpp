#pragma once
// Texts that scripts keep with objects, and the notes of items.

#include "headless/project/project.hpp"

#include <optional>
#include <string>
#include <string_view>

namespace headless::rpp {

/// The text that a script has stored under the key; empty if there is none.
std::optional<std::string> script_text(const project::Track& track, std::string_view key);
std::optional<std::string> script_text(const project::Item& item, std::string_view key);
std::optional<std::string> script_text(const project::Take& take, std::string_view key);
std::optional<std::string> script_text(const project::Envelope& envelope, std::string_view key);

/// Stores a text under the key; an empty one removes it.
/// @returns false, without a change, for a key or text that no line can hold
bool set_script_text(project::Track& track, std::string_view key, std::string_view text);
bool set_script_text(project::Item& item, std::string_view key, std::string_view text);
bool set_script_text(project::Take& take, std::string_view key, std::string_view text);
bool set_script_text(project::Envelope& envelope, std::string_view key,
                     std::string_view text); ///< after give_lines

/// The item's notes; empty if it has none.
std::string notes_of(const project::Item& item);
void set_notes(project::Item& item, std::string_view notes);

} // namespace headless::rpp
