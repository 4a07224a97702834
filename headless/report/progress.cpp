#include "headless/report/progress.hpp"

#include "headless/report/printable.hpp"

#include <string>
#include <sys/ioctl.h>
#include <unistd.h>

namespace headless {
namespace {

constexpr std::string_view erase_line = "\r\x1b[K";

std::size_t columns_of(int descriptor) {
    winsize size{};
    const bool known = ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

} // namespace

Progress::Progress(int stream_descriptor)
    : descriptor_(stream_descriptor), on_terminal_(isatty(stream_descriptor) == 1) {}

void Progress::show(std::size_t number, std::size_t total, std::string_view name) {
    if (!on_terminal_)
        return;
    const std::string line = std::to_string(number) + "/" + std::to_string(total) + "  " + printable(name);
    // A full last column would make some terminals wrap, and the line could no longer be erased.
    write(std::string(erase_line) + std::string(fitting(line, columns_of(descriptor_) - 1)));
    shown_ = true;
}

void Progress::erase() {
    if (shown_)
        write(erase_line);
    shown_ = false;
}

void Progress::write(std::string_view text) const {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor_, text.data(), text.size());
        if (written <= 0)
            return; // a progress line is not worth failing for
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace headless
