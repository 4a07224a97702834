#include "headless/system/terminal.hpp"

#include <io.h>
#include <windows.h>

namespace headless::system {
namespace {

HANDLE handle_of(int descriptor) { return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor)); }

} // namespace

bool is_terminal(int descriptor) {
    DWORD mode = 0;
    return GetConsoleMode(handle_of(descriptor), &mode) != 0;
}

std::size_t columns_of(int descriptor) {
    CONSOLE_SCREEN_BUFFER_INFO screen{};
    if (!GetConsoleScreenBufferInfo(handle_of(descriptor), &screen))
        return 0;
    return static_cast<std::size_t>(screen.srWindow.Right - screen.srWindow.Left + 1);
}

} // namespace headless::system
