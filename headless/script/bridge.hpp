#pragma once
// The table `reaper` of a Lua script: every function that the workstation and its plug-ins offer to scripts,
// called by its definition text. Return value first, then the results among the parameters.

#include "headless/script/arguments.hpp"

#include <vector>

namespace headless {

/// Must outlive every Lua state that it was opened in.
class Bridge {
public:
    /// Takes the functions that are there now, so plug-ins must have been loaded.
    explicit Bridge(Workstation& workstation);
    Bridge(const Bridge&) = delete;
    Bridge& operator=(const Bridge&) = delete;

    /// Sets the global `reaper`. May raise Lua's memory error.
    void open(lua_State* L);

private:
    TextBuffers buffers_;
    std::vector<BridgedFunction> functions_;
};

} // namespace headless
