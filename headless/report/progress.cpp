#include "headless/report/progress.hpp"

#include "headless/report/printable.hpp"
#include "headless/system/files.hpp"
#include "headless/system/terminal.hpp"

#include <cmath>
#include <cstdint>

namespace headless::report {
namespace {

constexpr std::string_view erase_line = "\r\x1b[K";

std::size_t columns_of(int descriptor) {
    const std::size_t columns = system::columns_of(descriptor);
    return columns > 0 ? columns : 80;
}

} // namespace

std::string time_left_text(double elapsed_seconds, std::size_t done, std::size_t total) {
    if (done == 0 || done > total)
        return {};
    const auto left =
        std::llround(elapsed_seconds / static_cast<double>(done) * static_cast<double>(total - done));
    const auto two_digits = [](long long number) {
        return (number < 10 ? "0" : "") + std::to_string(number);
    };
    const std::string minutes = left < 3600 ? std::to_string(left / 60)
                                            : std::to_string(left / 3600) + ":" + two_digits(left / 60 % 60);
    return minutes + ":" + two_digits(left % 60) + " left";
}

Progress::Progress(int stream_descriptor)
    : descriptor_(stream_descriptor), on_terminal_(system::is_terminal(stream_descriptor)) {}

void Progress::show(std::size_t number, std::size_t total, std::string_view name) {
    if (!on_terminal_)
        return;
    if (first_number_ == 0) {
        first_number_ = number;
        begin_ = std::chrono::steady_clock::now();
    }
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - begin_;
    const std::string left =
        time_left_text(elapsed.count(), number - first_number_, total + 1 - first_number_);
    const std::string line = std::to_string(number) + "/" + std::to_string(total) + "  " + left +
                             (left.empty() ? "" : "  ") + printable(name);
    // Some terminals wrap after a full last column, so that the line could no longer be erased.
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
        const std::int64_t written = system::write(descriptor_, text.data(), text.size());
        if (written <= 0)
            return; // a progress line is not worth failing for
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

} // namespace headless::report
