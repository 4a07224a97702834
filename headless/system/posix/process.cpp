#include "headless/system/process.hpp"

#include "headless/system/posix/differences.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace headless::system {
namespace {

/// @param output  becomes the standard output; -1: the one of this process
/// @returns 0 if the program cannot be started
pid_t spawn(const std::vector<std::string>& words, int output) {
    if (words.empty())
        return 0;
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    if (posix_spawn_file_actions_init(&actions) != 0)
        return 0;
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    if (output >= 0)
        posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    pid_t child = 0;
    const int error =
        posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), posix::environment());
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? child : 0;
}

} // namespace

std::int64_t process_number() { return getpid(); }

std::optional<ChildProcess> ChildProcess::start(const std::vector<std::string>& words, Output output) {
    std::array<int, 2> ends{-1, -1};
    if (output == Output::piped && posix::make_pipe(ends) != 0)
        return std::nullopt;
    const pid_t child = spawn(words, ends[1]);
    if (ends[1] >= 0)
        close(ends[1]);
    if (child != 0)
        return ChildProcess(child, ends[0]);
    if (ends[0] >= 0)
        close(ends[0]);
    return std::nullopt;
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : process_(std::exchange(other.process_, 0)), output_(std::exchange(other.output_, -1)) {}

ChildProcess::~ChildProcess() { close_output(); }

ChildProcess::Reading ChildProcess::read_output(std::string& output, std::chrono::milliseconds patience) {
    std::array<char, 65536> block{};
    pollfd waiting{static_cast<int>(output_), POLLIN, 0};
    if (poll(&waiting, 1, static_cast<int>(patience.count())) <= 0)
        return Reading::nothing_yet;
    const ssize_t bytes = read(waiting.fd, block.data(), block.size());
    if (bytes <= 0)
        return bytes == 0 ? Reading::end : Reading::failed;
    output.append(block.data(), static_cast<std::size_t>(bytes));
    return Reading::bytes;
}

void ChildProcess::close_output() {
    if (const auto output = static_cast<int>(std::exchange(output_, -1)); output >= 0)
        close(output);
}

void ChildProcess::kill() { ::kill(static_cast<pid_t>(process_), SIGKILL); }

int ChildProcess::wait() {
    constexpr int signal_base = 128;
    int status = 0;
    while (waitpid(static_cast<pid_t>(process_), &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : signal_base + WTERMSIG(status);
}

} // namespace headless::system
