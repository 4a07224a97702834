#pragma once
// The message shown if an extension that an operation needs is missing.

#include "host_api/export.hpp"

#include <stdexcept>

/// Third-party extensions that this library may need.
enum class third_plugin : int { SWS = 0 };

/// Thrown by the lookup if a function is missing, and caught before the dialog is shown. Never leaves the
/// library.
class function_unload_exception : public std::runtime_error {
public:
    function_unload_exception() : std::runtime_error("a function of an extension is missing") {}
    int code = 1;
};

namespace dependency_manager {

/// Shows a message that `apiName` needs `plugin`, and opens the plugin's web address if the user agrees.
/// Shows nothing for an unknown plugin, or before the library is entered. `programName` is not used.
MK_EXPORT void assert_not_installed(const char* apiName, const char* programName, third_plugin plugin);

/// Opens a web address in the user's browser. Waits for the opening command, not for the browser.
MK_EXPORT void open_url(const char* url);

} // namespace dependency_manager
