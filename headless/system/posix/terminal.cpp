#include "headless/system/terminal.hpp"

#include <sys/ioctl.h>
#include <unistd.h>

namespace headless::system {

bool is_terminal(int descriptor) { return isatty(descriptor) == 1; }

std::size_t columns_of(int descriptor) {
    winsize size{};
    return ioctl(descriptor, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

} // namespace headless::system
