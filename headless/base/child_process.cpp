#include "headless/base/child_process.hpp"

#include "headless/base/interruption.hpp"

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

extern char** environ;

namespace headless {
namespace {

using Clock = std::chrono::steady_clock;

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
    const int error = posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? child : 0;
}

/// Reads until the other end is closed. @returns false if it was given up
bool read_all(int input, Clock::time_point deadline, std::string& output) {
    constexpr int poll_milliseconds = 50;
    std::array<char, 65536> block{};
    for (;;) {
        pollfd waiting{input, POLLIN, 0};
        const bool is_ready = poll(&waiting, 1, poll_milliseconds) > 0;
        if (interruption::signal_number() != 0 || Clock::now() >= deadline)
            return false;
        if (!is_ready)
            continue;
        const ssize_t bytes = read(input, block.data(), block.size());
        if (bytes <= 0)
            return bytes == 0;
        output.append(block.data(), static_cast<std::size_t>(bytes));
    }
}

int wait_for(pid_t child) {
    constexpr int signal_base = 128;
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : signal_base + WTERMSIG(status);
}

} // namespace

std::vector<std::string> command_words(std::string_view command_line) {
    std::vector<std::string> words;
    char quote = '\0';
    bool is_inside = false;
    for (const char c : command_line) {
        const bool is_blank = c == ' ' || c == '\t' || c == '\n';
        if (quote == '\0' && is_blank) {
            is_inside = false;
            continue;
        }
        if (!is_inside)
            words.emplace_back();
        is_inside = true;
        if (quote == '\0' && (c == '"' || c == '\''))
            quote = c;
        else if (c == quote)
            quote = '\0';
        else
            words.back() += c;
    }
    return words;
}

std::optional<ProcessResult> run_process(const std::vector<std::string>& words,
                                         std::optional<std::chrono::milliseconds> time_limit) {
    std::array<int, 2> pipe_ends{};
    if (pipe2(pipe_ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    const auto deadline = time_limit ? Clock::now() + *time_limit : Clock::time_point::max();
    const pid_t child = spawn(words, pipe_ends[1]);
    close(pipe_ends[1]);
    ProcessResult result;
    const bool is_whole = child != 0 && read_all(pipe_ends[0], deadline, result.output);
    close(pipe_ends[0]);
    if (child != 0 && !is_whole)
        kill(child, SIGKILL);
    if (child != 0)
        result.status = wait_for(child);
    return is_whole ? std::optional(std::move(result)) : std::nullopt;
}

bool start_process(const std::vector<std::string>& words) { return spawn(words, -1) != 0; }

} // namespace headless
