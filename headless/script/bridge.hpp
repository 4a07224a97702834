#pragma once
// The table `reaper` of a Lua script: every function that the workstation and its plug-ins offer to scripts,
// called according to its definition text. The return value comes first, then the results among the
// parameters.

#include "headless/script/arguments.hpp"

#include <string>
#include <vector>

namespace headless::script {

/// Must outlive every Lua state in which it was opened.
class Bridge {
public:
    /// Collects the functions that exist now, so plug-ins must already be loaded.
    explicit Bridge(workstation::Workstation& workstation);
    Bridge(const Bridge&) = delete;
    Bridge& operator=(const Bridge&) = delete;

    /// Sets the global `reaper`. May raise Lua's memory error.
    void open(lua_State* L);

    /// The names of the functions, sorted.
    std::vector<std::string> names() const;

private:
    TextBuffers buffers_;
    std::vector<BridgedFunction> functions_;
};

} // namespace headless::script
