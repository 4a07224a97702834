#include "headless/base/child_process.hpp"

#include "headless/base/interruption.hpp"
#include "headless/system/process.hpp"

#include <utility>

namespace headless {
namespace {

using Clock = std::chrono::steady_clock;
using system::ChildProcess;

/// Reads until the other end is closed. @returns false if it was given up
bool read_all(ChildProcess& child, Clock::time_point deadline, std::string& output) {
    constexpr std::chrono::milliseconds patience{50};
    for (;;) {
        const ChildProcess::Reading reading = child.read_output(output, patience);
        if (interruption::signal_number() != 0 || Clock::now() >= deadline)
            return false;
        if (reading == ChildProcess::Reading::end || reading == ChildProcess::Reading::failed)
            return reading == ChildProcess::Reading::end;
    }
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
    const auto deadline = time_limit ? Clock::now() + *time_limit : Clock::time_point::max();
    auto child = ChildProcess::start(words, ChildProcess::Output::piped);
    if (!child)
        return std::nullopt;
    ProcessResult result;
    const bool is_whole = read_all(*child, deadline, result.output);
    child->close_output();
    if (!is_whole)
        child->kill();
    result.status = child->wait();
    return is_whole ? std::optional(std::move(result)) : std::nullopt;
}

bool start_process(const std::vector<std::string>& words) {
    return ChildProcess::start(words, ChildProcess::Output::shared).has_value();
}

} // namespace headless
