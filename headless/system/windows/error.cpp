#include "headless/system/windows/error.hpp"

#include "common/windows/error_number.hpp"

#include <cerrno>
#include <windows.h>

namespace headless::system::windows {

bool set_errno() {
    errno = error_number::of(GetLastError());
    return false;
}

} // namespace headless::system::windows
