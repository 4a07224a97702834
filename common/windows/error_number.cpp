#include "common/windows/error_number.hpp"

#include <cerrno>
#include <system_error>
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

int error_number::of(unsigned long code) {
    switch (code) {
    case ERROR_LOCK_VIOLATION:
        return EWOULDBLOCK;
    case ERROR_SHARING_VIOLATION:
        return EACCES;
    case ERROR_INVALID_NAME:
        return ENOENT;
    case ERROR_DIRECTORY:
        return ENOTDIR;
    default:
        break;
    }
    const std::error_condition known = std::system_category().default_error_condition(static_cast<int>(code));
    return known.category() == std::generic_category() ? known.value() : EIO;
}
