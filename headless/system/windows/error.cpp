#include "headless/system/windows/error.hpp"

#include <cerrno>
#include <system_error>
#include <windows.h>

namespace headless::system::windows {

bool set_errno() {
    const DWORD code = GetLastError();
    const std::error_condition known = std::system_category().default_error_condition(static_cast<int>(code));
    errno = code == ERROR_LOCK_VIOLATION                  ? EWOULDBLOCK
            : code == ERROR_SHARING_VIOLATION             ? EACCES
            : code == ERROR_INVALID_NAME                  ? ENOENT
            : known.category() == std::generic_category() ? known.value()
                                                          : EIO;
    return false;
}

} // namespace headless::system::windows
