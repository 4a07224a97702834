#pragma once
// The doors through which plug-ins call in. A host function is written as a C++ function whose first
// parameter is the workstation; its door has the C signature that remains, serves the living workstation, and
// lets no exception out.

#include "headless/host/workstation.hpp"

#include <exception>
#include <span>

namespace headless {

/// One name that GetFunc knows.
struct HostFunction {
    const char* name;
    void* address;
};

/// Records that a host function failed for a reason nobody foresaw.
void report_escaped(Workstation& workstation, const char* reason) noexcept;

template <auto Function>
struct Door;

template <class R, class... A, R (*Function)(Workstation&, A...)>
struct Door<Function> {
    static R call(A... arguments) noexcept {
        Workstation* workstation = Workstation::current();
        if (!workstation) {
            return R();
        }
        try {
            return Function(*workstation, arguments...);
        } catch (const std::exception& exception) {
            report_escaped(*workstation, exception.what());
        } catch (...) {
            report_escaped(*workstation, "unknown exception");
        }
        return R();
    }
};

template <auto Function>
HostFunction host_function(const char* name) {
    return {name, reinterpret_cast<void*>(&Door<Function>::call)};
}

// The tables, family by family.
std::span<const HostFunction> track_functions();
std::span<const HostFunction> item_functions();
std::span<const HostFunction> take_functions();
std::span<const HostFunction> audio_functions();
std::span<const HostFunction> envelope_functions();
std::span<const HostFunction> marker_functions();
std::span<const HostFunction> project_functions();
std::span<const HostFunction> dialog_functions();
std::span<const HostFunction> insertion_functions();

} // namespace headless
