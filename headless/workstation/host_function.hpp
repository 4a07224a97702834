#pragma once
// One function that the workstation offers to plug-ins and scripts.

#include "headless/workstation/script_form.hpp"

namespace headless::workstation {

/// A function that GetFunc finds by name.
struct HostFunction {
    const char* name;
    void* address;
    const char* definition = nullptr; ///< null: not for scripts
    ScriptCall* script_call = nullptr;
};

} // namespace headless::workstation
