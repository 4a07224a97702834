#include "system/copy_over.hpp"

#include <system_error>
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

// The standard library's copy replaces no file here: it takes any two for the same.
void copy_over(const std::filesystem::path& from, const std::filesystem::path& to) {
    if (!CopyFileW(from.c_str(), to.c_str(), FALSE))
        throw std::filesystem::filesystem_error(
            "cannot copy", from, to,
            std::error_code(static_cast<int>(GetLastError()), std::system_category()));
}
