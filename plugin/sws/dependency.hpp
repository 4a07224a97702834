#pragma once
// The functions of the SWS extension are looked up at each use. If one is missing, a dialog says what to
// install.

#include "sws/missing_extension.hpp"
#include "utility/message_catalogue.hpp"

namespace dependency_manager {

/// Returns the address of a function by name, as the bound host knows it; null if the host does not know the
/// name or no host is bound.
void* look_up(const char* name);

/// Stores the named function in `slot`.
/// @throws function_unload_exception if it is missing; `slot` is then null
template <class F>
void bind(F*& slot, const char* name) {
    slot = reinterpret_cast<F*>(look_up(name));
    if (!slot)
        throw function_unload_exception();
}

/// Runs `bind_all`, which binds what an operation needs. Shows the dialog for `apiName` if something is
/// missing.
/// @returns whether everything is there
template <class BindAll>
bool bound(const char* apiName, BindAll bind_all) {
    try {
        bind_all();
        return true;
    } catch (const function_unload_exception&) {
        assert_not_installed(apiName, mk_app_def::PROGRAM_NAME, third_plugin::SWS);
        return false;
    }
}

} // namespace dependency_manager
