#pragma once
// An object's state as a text in the form of the project file, without indent, as scripts get and set it.

#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"

#include <string>
#include <string_view>

namespace headless::rpp {

/// The object's block. Objects without an identifier get one. The master's is made of lines of the project.
std::string state_of(project::Track& track);
std::string state_of(project::Item& item);
std::string state_of(project::Envelope& envelope, project::Project& project);

/// Replaces everything about the object. It keeps its address and its place; its items, takes and envelopes
/// are new ones. Fails, without a change, for a text that is no block of this kind, and for the master.
Result<void> set_state(project::Track& track, std::string_view text);
Result<void> set_state(project::Item& item, std::string_view text);
Result<void> set_state(project::Envelope& envelope, project::Project& project, std::string_view text);

} // namespace headless::rpp
