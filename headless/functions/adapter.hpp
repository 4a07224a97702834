#pragma once
// Makes a C++ function callable by plug-ins and scripts. The adapter has the C signature of the function and
// the call for script engines; both look up handles (parameters.hpp) and let no exception escape.

#include "common/definition_text.hpp"
#include "headless/functions/parameters.hpp"
#include "headless/workstation/host_function.hpp"

#include <cstddef>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

namespace headless::functions {

template <auto Function, class R, class... A>
class Adapter {
public:
    static constexpr std::size_t parameter_count = sizeof...(A);

    static CType<R> call(CType<A>... arguments) noexcept {
        return call_guarded(reinterpret_cast<const void*>(&call), arguments...);
    }

    static void* script_call(void** arguments, int count) {
        if (std::cmp_less(count, parameter_count))
            return nullptr;
        return decode_and_call(arguments, std::index_sequence_for<A...>());
    }

    static std::string definition(std::string_view names, std::string_view help) {
        using definition_text::TypeWord;
        return definition_text::compose(TypeWord<CType<R>>::value, {TypeWord<CType<A>>::value...}, names,
                                        help);
    }

private:
    template <std::size_t... I>
    static void* decode_and_call([[maybe_unused]] void** arguments, std::index_sequence<I...>) {
        const auto* entry_point = reinterpret_cast<const void*>(&script_call);
        if constexpr (std::is_void_v<R>) {
            call_guarded(entry_point, definition_text::decode_argument<CType<A>>(arguments[I])...);
            return nullptr;
        } else {
            return workstation::encode_result(
                call_guarded(entry_point, definition_text::decode_argument<CType<A>>(arguments[I])...));
        }
    }

    static CType<R> call_guarded(const void* entry_point, CType<A>... arguments) noexcept {
        Workstation* workstation = Workstation::current();
        if (!workstation)
            return CType<R>();
        try {
            return call_resolved(*workstation, resolve<A>(*workstation, arguments)...);
        } catch (const std::exception& exception) {
            workstation->report_exception(entry_point, exception.what());
        } catch (...) {
            workstation->report_exception(entry_point, "unknown exception");
        }
        return CType<R>();
    }

    static CType<R> call_resolved([[maybe_unused]] Workstation& workstation, Resolved<A>... arguments) {
        if ((is_missing<A>(arguments) || ...))
            return CType<R>();
        const auto call_function = [&] {
            if constexpr (std::is_invocable_v<decltype(Function), Workstation&, A...>)
                return Function(workstation, pass<A>(arguments)...);
            else
                return Function(pass<A>(arguments)...);
        };
        if constexpr (std::is_void_v<R>)
            call_function();
        else
            return to_c<R>(call_function());
    }
};

template <auto Function, class R, class... A>
Adapter<Function, R, A...> adapter_for(R (*)(Workstation&, A...));
template <auto Function, class R, class... A>
Adapter<Function, R, A...> adapter_for(R (*)(A...));

template <auto Function>
using AdapterFor = decltype(adapter_for<Function>(Function));

/// The names of a function's parameters, separated by commas (see script_call.hpp). Another number of names
/// than of parameters does not compile.
template <std::size_t Count>
struct ParameterNames {
    consteval ParameterNames(const char* names) : text(names) {
        if (definition_text::count_names(text) != Count)
            throw "a name for each parameter";
    }
    std::string_view text;
};

/// A function that only plug-ins can call. Its first parameter may be the workstation, which callers do not
/// pass.
template <auto Function>
workstation::EntryPoints host_function() {
    return {reinterpret_cast<void*>(&AdapterFor<Function>::call)};
}

/// A function for plug-ins and scripts, with the names of its parameters and a line of help.
/// @tparam ForScripts the function that scripts call, if scripts cannot supply what a plug-in's call needs
template <auto Function, auto ForScripts = Function>
workstation::EntryPoints host_function(ParameterNames<AdapterFor<ForScripts>::parameter_count> names,
                                       std::string_view help) {
    return {reinterpret_cast<void*>(&AdapterFor<Function>::call),
            AdapterFor<ForScripts>::definition(names.text, help), &AdapterFor<ForScripts>::script_call};
}

} // namespace headless::functions
