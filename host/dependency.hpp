#pragma once
// The SWS extension: its functions are looked up at each use, and a missing one leads to a dialog that tells
// the user what to install.

#include "host/export.hpp"
#include "host/message_catalogue.hpp"

#include <stdexcept>

/// Outside extensions that this library can ask for.
enum class third_plugin : int { SWS = 0 };

/// Carries the fact that a function is missing from the lookup to the dialog. Never leaves the library.
class function_unload_exception : public std::runtime_error {
public:
    function_unload_exception() : std::runtime_error("a function of an extension is missing") {}
    int code = 1;
};

namespace dependency_manager {

/// Tells the user that `apiName` needs `plugin`, and opens its web address when asked to. Shows nothing for a
/// plugin that it does not know, and nothing before the library is entered. `programName` is not used.
MK_EXPORT void assert_not_installed(const char* apiName, const char* programName, third_plugin plugin);

/// Opens a web address in the user's browser; waits for the opening command, not for the browser.
MK_EXPORT void open_url(const char* url);

/// Address of a function by name, as the bound host knows it; null when it does not or none is bound.
void* look_up(const char* name);

/// Stores the named function in `slot`. @throws function_unload_exception when it is missing; `slot` is then
/// null.
template <class F>
void bind(F*& slot, const char* name) {
    slot = reinterpret_cast<F*>(look_up(name));
    if (!slot)
        throw function_unload_exception();
}

/// Runs `bind_all`, which binds what an operation needs. When something is missing the dialog for `apiName`
/// is shown.
/// @returns whether all is there.
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
