#pragma once
// Errors of the system as errno.

namespace headless::system::windows {

/// Sets errno from GetLastError(). @returns false, for the caller to return
bool set_errno();

} // namespace headless::system::windows
