#include "headless/report/progress.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>

namespace headless {
namespace {

std::string available(int descriptor) {
    std::array<char, 512> text{};
    fcntl(descriptor, F_SETFL, O_NONBLOCK);
    const ssize_t size = read(descriptor, text.data(), text.size());
    return {text.data(), size > 0 ? static_cast<std::size_t>(size) : 0};
}

/// A terminal whose screen the test reads.
struct Terminal {
    int screen = posix_openpt(O_RDWR | O_NOCTTY);
    int line = -1;

    explicit Terminal(unsigned short columns) {
        grantpt(screen);
        unlockpt(screen);
        line = open(ptsname(screen), O_RDWR | O_NOCTTY);
        winsize size{};
        size.ws_col = columns;
        ioctl(line, TIOCSWINSZ, &size);
    }
    ~Terminal() {
        close(line);
        close(screen);
    }
};

TEST(Progress, rewrites_one_line_cut_to_the_terminal_and_erases_it_in_the_end) {
    Terminal terminal(20);
    {
        Progress progress(terminal.line);
        progress.show(3, 40, "a\nvery_long_name_of_a_recording.wav");
        EXPECT_EQ(available(terminal.screen), "\r\x1b[K3/40  a\\nvery_long_");
        progress.erase();
        EXPECT_EQ(available(terminal.screen), "\r\x1b[K");
        progress.erase();
        EXPECT_EQ(available(terminal.screen), "") << "nothing is shown, nothing to erase";
        progress.show(4, 40, "b.wav");
        available(terminal.screen);
    }
    EXPECT_EQ(available(terminal.screen), "\r\x1b[K");
}

TEST(Progress, writes_nothing_into_a_pipe) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    { Progress(ends[1]).show(1, 2, "a.wav"); }
    EXPECT_EQ(available(ends[0]), "");
    close(ends[0]);
    close(ends[1]);
}

} // namespace
} // namespace headless
