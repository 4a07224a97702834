#pragma once
// The doors through which plug-ins and scripts call in. A host function is written as a C++ function whose
// first parameter is the workstation; its door has the C signature that remains, serves the living
// workstation, and lets no exception out.

#include "headless/host/script_form.hpp"
#include "headless/host/workstation.hpp"

#include <exception>
#include <span>

namespace headless {

/// One name that GetFunc knows.
struct HostFunction {
    const char* name;
    void* address;
    const char* definition = nullptr; ///< null: not for scripts
    ScriptCall* script_call = nullptr;
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

    static void* script_call(void** words, int count) {
        if (count < static_cast<int>(sizeof...(A))) {
            return nullptr;
        }
        return [words]<std::size_t... I>(std::index_sequence<I...>)->void* {
            if constexpr (std::is_void_v<R>) {
                call(definition_text::from_word<A>(words[I])...);
                return nullptr;
            } else {
                return to_word(call(definition_text::from_word<A>(words[I])...));
            }
        }
        (std::index_sequence_for<A...>{});
    }

    template <definition_text::Text Names, definition_text::Text Help>
    static constexpr auto definition = definition_text::make<Names, Help, R, A...>();
};

/// A function for plug-ins alone.
template <auto Function>
HostFunction host_function(const char* name) {
    return {name, reinterpret_cast<void*>(&Door<Function>::call)};
}

/// A function for plug-ins and scripts, with its parameters' names (see script_form.hpp) and a line of help.
/// @tparam ForScripts what scripts call, where a plug-in's call needs knowledge that they lack
template <auto Function, definition_text::Text Names, definition_text::Text Help, auto ForScripts = Function>
HostFunction host_function(const char* name) {
    using ScriptDoor = Door<ForScripts>;
    return {name, reinterpret_cast<void*>(&Door<Function>::call),
            ScriptDoor::template definition<Names, Help>.data(), &ScriptDoor::script_call};
}

// The tables, family by family.
std::span<const HostFunction> track_functions();
std::span<const HostFunction> item_functions();
std::span<const HostFunction> take_functions();
std::span<const HostFunction> source_functions();
std::span<const HostFunction> audio_functions();
std::span<const HostFunction> envelope_functions();
std::span<const HostFunction> marker_functions();
std::span<const HostFunction> project_functions();
std::span<const HostFunction> dialog_functions();
std::span<const HostFunction> insertion_functions();
std::span<const HostFunction> file_functions();
std::span<const HostFunction> session_functions();

} // namespace headless
