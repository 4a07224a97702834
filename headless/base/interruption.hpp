#pragma once
// Signals that ask the program to end: SIGINT, SIGTERM and SIGHUP. The first one is recorded, and loops check
// for it. A second one ends the program at once, as it would by default.

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <pthread.h>

namespace headless::interruption {

using Clock = std::chrono::steady_clock;

/// The message for work that was abandoned on request.
constexpr const char* reason = "interrupted";

namespace detail {

constexpr std::array<int, 3> signals{SIGINT, SIGTERM, SIGHUP};

inline std::atomic<int> received = 0;
inline std::atomic<Clock::rep> received_at = 0;
inline std::atomic<void (*)(void*)> reaction = nullptr;
inline std::atomic<void*> argument = nullptr;
inline std::atomic<pthread_t> watching_thread;

static_assert(std::atomic<Clock::rep>::is_always_lock_free && std::atomic<pthread_t>::is_always_lock_free);

/// Runs as a signal handler, on the thread that called watch().
inline void handle(int number) {
    if (pthread_equal(pthread_self(), watching_thread) == 0) {
        pthread_kill(watching_thread, number);
        return;
    }
    for (const int each : signals) {
        struct sigaction present {};
        if (sigaction(each, nullptr, &present) == 0 && present.sa_handler == handle)
            std::signal(each, SIG_DFL);
    }
    received_at = Clock::now().time_since_epoch().count();
    received = number;
    if (const auto react = reaction.load())
        react(argument);
}

} // namespace detail

/// From now on the signals are recorded on the calling thread. A signal that is ignored, as under nohup,
/// stays ignored.
inline void watch() {
    detail::watching_thread = pthread_self();
    struct sigaction action {}; // no SA_RESTART: a dialog must stop waiting
    action.sa_handler = detail::handle;
    for (const int each : detail::signals) {
        struct sigaction present {};
        if (sigaction(each, nullptr, &present) == 0 && present.sa_handler != SIG_IGN)
            sigaction(each, &action, nullptr);
    }
}

/// The number of the signal that came, 0 if none has.
inline int signal_number() { return detail::received; }

/// How long ago the signal came.
inline Clock::duration age() {
    return Clock::now().time_since_epoch() - Clock::duration(detail::received_at.load());
}

/// While this object exists, a signal also makes one more call, from within the signal handler.
class Reaction {
public:
    Reaction(void (*react)(void*), void* argument) {
        detail::argument = argument;
        detail::reaction = react;
    }
    ~Reaction() { detail::reaction = nullptr; }
    Reaction(const Reaction&) = delete;
    Reaction& operator=(const Reaction&) = delete;
};

} // namespace headless::interruption
