#pragma once
// One function that the workstation offers to plug-ins and scripts.

#include "headless/workstation/script_call.hpp"

#include <string>

namespace headless::workstation {

/// How plug-ins and scripts call a function.
struct EntryPoints {
    void* address;                     ///< a C function, for plug-ins
    std::string definition{};          ///< its definition text; empty if scripts cannot call it
    ScriptCall* script_call = nullptr; ///< for scripts
};

/// A function that GetFunc finds by name.
struct HostFunction {
    const char* name;
    EntryPoints entry_points;
};

} // namespace headless::workstation
