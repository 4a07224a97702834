#pragma once
// The entry points through which plug-ins and scripts call in. A host function is written as a C++ function
// whose first parameter is the workstation. Its entry point has the C signature of the remaining parameters,
// calls the function with the current workstation, and catches every exception.

#include "headless/workstation/host_function.hpp"
#include "headless/workstation/workstation.hpp"

#include <exception>

namespace headless::functions {

template <auto Function>
struct Door;

template <class R, class... A, R (*Function)(workstation::Workstation&, A...)>
struct Door<Function> {
    static R call(A... arguments) noexcept {
        workstation::Workstation* workstation = workstation::Workstation::current();
        if (!workstation)
            return R();
        try {
            return Function(*workstation, arguments...);
        } catch (const std::exception& exception) {
            workstation->report_escaped(exception.what());
        } catch (...) {
            workstation->report_escaped("unknown exception");
        }
        return R();
    }

    static void* script_call(void** words, int count) {
        if (count < static_cast<int>(sizeof...(A)))
            return nullptr;
        return [words]<std::size_t... I>(std::index_sequence<I...>)->void* {
            if constexpr (std::is_void_v<R>) {
                call(definition_text::from_word<A>(words[I])...);
                return nullptr;
            } else {
                return workstation::to_word(call(definition_text::from_word<A>(words[I])...));
            }
        }
        (std::index_sequence_for<A...>{});
    }

    template <definition_text::Text Names, definition_text::Text Help>
    static constexpr auto definition = definition_text::make<Names, Help, R, A...>();
};

/// A function that only plug-ins can call.
template <auto Function>
workstation::HostFunction host_function(const char* name) {
    return {name, reinterpret_cast<void*>(&Door<Function>::call)};
}

/// A function for plug-ins and scripts, with the names of its parameters (see script_form.hpp) and a line of
/// help.
/// @tparam ForScripts the function that scripts call, if scripts cannot supply what a plug-in's call needs
template <auto Function, definition_text::Text Names, definition_text::Text Help, auto ForScripts = Function>
workstation::HostFunction host_function(const char* name) {
    using ScriptDoor = Door<ForScripts>;
    return {name, reinterpret_cast<void*>(&Door<Function>::call),
            ScriptDoor::template definition<Names, Help>.data(), &ScriptDoor::script_call};
}

} // namespace headless::functions
