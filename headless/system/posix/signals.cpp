#include "headless/system/signals.hpp"

#include <array>
#include <atomic>
#include <csignal>
#include <pthread.h>
#include <utility>

namespace headless::system {
namespace {

constexpr std::array<std::pair<int, const char*>, 3> signals{
    {{SIGINT, "SIGINT"}, {SIGTERM, "SIGTERM"}, {SIGHUP, "SIGHUP"}}};

std::atomic<pthread_t> watching_thread;
std::atomic<void (*)(int)> reaction = nullptr;

static_assert(std::atomic<pthread_t>::is_always_lock_free && std::atomic<void (*)(int)>::is_always_lock_free);

void handle(int number) {
    if (pthread_equal(pthread_self(), watching_thread) == 0) {
        pthread_kill(watching_thread, number);
        return;
    }
    for (const auto& [each, name] : signals) {
        struct sigaction present {};
        if (sigaction(each, nullptr, &present) == 0 && present.sa_handler == handle)
            std::signal(each, SIG_DFL);
    }
    reaction.load()(number);
}

} // namespace

void watch_termination(void (*react)(int number)) {
    watching_thread = pthread_self();
    reaction = react;
    struct sigaction action {}; // no SA_RESTART: a dialog must stop waiting
    action.sa_handler = handle;
    for (const auto& [each, name] : signals) {
        struct sigaction present {};
        if (sigaction(each, nullptr, &present) == 0 && present.sa_handler != SIG_IGN)
            sigaction(each, &action, nullptr);
    }
}

void ignore_closed_pipes() { std::signal(SIGPIPE, SIG_IGN); }

std::string signal_name(int number) {
    for (const auto& [each, name] : signals)
        if (each == number)
            return name;
    return "signal " + std::to_string(number);
}

} // namespace headless::system
