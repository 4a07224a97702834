#pragma once
// The reference of what scripts may call, printed from the definition texts alone.

#include "headless/host/workstation.hpp"

#include <string>
#include <vector>

namespace headless {

enum class ReferenceForm { text, markdown };

/// One entry a function in the given order: how a Lua script calls it, with types and results, and the help.
std::string api_reference(const std::vector<ScriptFunction>& functions, ReferenceForm form);

} // namespace headless
